#pragma once

#include "interchange/table.h"

/// How the operator has read tables before, by their headings, in the settings.
namespace TableProfiles {

/// Tables without headings are not remembered: nothing tells one from another.
constexpr int Most = 30;

/// The way a table was read that had these headings at first sight; nothing when there was none.
std::optional<Interchange::TableChoice> Find(const Interchange::TableLook& atFirst);
void Remember(const Interchange::TableLook& atFirst, const Interchange::TableChoice& choice);

} // namespace TableProfiles
