#pragma once

#include <QLatin1String>

/// Where the lists and the receiver's job stand in the value tree. The handlers take any place; these are the
/// ones that the programs, and whoever follows their lists, agree on.
namespace Paths {

// Nodes of lists; their children are the entries.
inline constexpr QLatin1String Targets("/Lists/LocalTargetList");
inline constexpr QLatin1String MemoryChannels("/Lists/MemoryChannels");
inline constexpr QLatin1String Noi("/Lists/NOIFrequencies");
inline constexpr QLatin1String Results("/Lists/SearchMCDataResults");

inline constexpr QLatin1String NoiNode("/NOI");
inline constexpr QLatin1String NoiDefinition("/NOI/Definition"); ///< text: the band list

inline constexpr QLatin1String Job("/JEN/Job");
inline constexpr QLatin1String JobText("/JEN/Job/File");          ///< text: the whole job, XML
inline constexpr QLatin1String JobSection("/JEN/Job/MemoryScan"); ///< text: the memory-scan section
inline constexpr QLatin1String JobSave("/JEN/Job/Save");          ///< flag: whoever announces asks for a save
inline constexpr QLatin1String
    SuppressRestart("/JEN/Job/SuppressRestart"); ///< flag: the job changes by a list

} // namespace Paths
