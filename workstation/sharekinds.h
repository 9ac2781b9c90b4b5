#pragma once

#include "controls/frequencystore/common/keys.h"
#include "link/sharedlist.h"

#include <span>

struct EntryColumns;
struct ShareRecordKind;
namespace FreqStoreXml {
class FrequencyStoreEntry;
}

/// A kind of list that seats share, by the name that it has at each site: one of entries, which are nodes, or
/// one of records, of which the members from `shape` to `add` say nothing.
struct ShareKind {
    const char* name;
    const char* title; ///< of such a list of another seat, to be translated
    const char* entryName;
    const Shape& (*shape)();
    MediatorType mediators;
    int storeType;
    bool hasFile; ///< see `SharedList`
    /// As the list's own view has them; null for the targets, which are mirrored in place.
    const EntryColumns& (*columns)();
    /// Adds an entry at the end of a list; without one to take values from it is a new one. Null as above.
    void (*add)(Node& list, const FreqStoreXml::FrequencyStoreEntry* from);
    const ShareRecordKind* records = nullptr; ///< null for a list of entries

    QString Name() const { return QString::fromLatin1(name); }
    /// In the language of the window.
    QString Title() const;
    /// The same of a list's name at a site; the name of a kind that this program cannot show.
    static QString TitleOf(const QString& list);
    /// Whether such a list of another seat is a list of its own.
    bool IsOfItsOwn() const { return columns || records; }
    /// The list of entries under that node, as the link is told of it.
    SharedList ListOf(Node& node) const;
};

/// The first one is that of the targets.
std::span<const ShareKind> ShareKinds();
/// Null for a kind that this program cannot show.
const ShareKind* FindShareKind(const QString& name);
