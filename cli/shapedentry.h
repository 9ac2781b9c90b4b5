#pragma once

#include "controls/frequencystore/common/simplefrequency.h"

/// A new entry at the end of a list, as the list makes it, but without a comment. `source` is the receiver
/// that it takes settings from, or null.
template <typename Entry>
Node& AddShapedEntry(Node& list, const char* name, const GeneralEntry* source) {
    const NewEntryNode made(list, Names::Intern(QString::fromLatin1(name)), Entry::Shape());
    Entry(made.node, true, source, made.use).SetComment(QString());
    return *made.node;
}
