#pragma once

#include "host/freqlist/keys.h"
#include "host/valuetree/node.h"
#include "host/valuetree/value.h"
#include "host/valuetree/valueptr.h"
#include "host/valuetree/valueselection.h"
#include "scan/scanner.h"

#include <span>

/// What is scanned, in the order in which it is offered.
enum class ScanSource { MemoryChannels, NoiBands, Range };

/// One setting of a scan: the value under "/Scan" that holds it, and its limits.
struct ScanValue {
    enum class Type { Frequency, Bandwidth, Integer, Real, Choice };

    const FreqList::Key& key;
    const char* title; ///< for Scan::tr
    const char* unit;  ///< of an integer or a real number
    Type type;
    double min = 0; ///< Hz for frequencies
    double max = 0;
    double initial = 0;                        ///< the number, or the place of the choice
    std::span<const char* const> choices = {}; ///< for Scan::tr
};

namespace ScanKeys {

using FreqList::Key;

inline constinit const Key Source("source");
inline constinit const Key From("from"); ///< Hz
inline constinit const Key To("to");
inline constinit const Key Step("step");
inline constinit const Key Settle("settle"); ///< ms
inline constinit const Key Dwell("dwell");
inline constinit const Key StopAt("stopat");
inline constinit const Key ScanThreshold("scanthreshold"); ///< dBµV, where a channel has none
inline constinit const Key GoOn("goon");
inline constinit const Key GoOnSeconds("goonseconds");
inline constinit const Key Priority("prioritychannel"); ///< Hz, 0 for none
inline constinit const Key PrioritySeconds("priorityseconds");
inline constinit const Key LockedOut("lockedout"); ///< list of Hz

// Commands: flags that are written. The last two turn off by themselves.
inline constinit const Key Running("running");
inline constinit const Key Hold("hold");
inline constinit const Key Skip("skip");
inline constinit const Key LockOut("lockout");

// What the scan tells.
inline constinit const Key State("state");   ///< in words
inline constinit const Key Reason("reason"); ///< why it waits, holds or has ended
inline constinit const Key Frequency("currentfrequency");
inline constinit const Key Channel("currentchannel"); ///< 0 for none
inline constinit const Key Comment("currentcomment");
inline constinit const Key Steps("steps");
inline constinit const Key Stops("stops");
inline constinit const Key Passes("passes");
inline constinit const Key Unreachable("unreachable");

} // namespace ScanKeys

/// The settings, in the order in which a panel shows them.
std::span<const ScanValue> ScanSettingValues();

/// The values of a scan under "/Scan" of the value tree: settings, commands and what it tells. It owns their
/// node; only one can live at a time.
class ScanValues {
public:
    /// `observer` follows settings and commands, and outlives this.
    explicit ScanValues(IObserver& observer);
    ~ScanValues();

    /// A value by its key, which must be one of those above.
    template <typename V>
    V& Get(Names::Id key) const {
        V* value = m_node.get()->FindOwn<V>(key);
        Q_ASSERT(value);
        return *value;
    }
    ValueBase* Find(Names::Id key) const { return m_node.get() ? m_node.get()->FindOwnValue(key) : nullptr; }
    static QString PathOf(Names::Id key);

    ScanSettings GetSettings() const;
    ScanSource GetSource() const;
    double GetNumber(Names::Id key) const;

private:
    template <typename V>
    V* add(Names::Id key, IObserver* observer);
    void addSetting(const ScanValue& setting, IObserver* observer);

    WeakRef<Node> m_node;
};
