#pragma once

class FrequencyBar;
class QMenu;

/// The region whose band plan the frequency bar shows: a choice of the operator's that the settings keep.
namespace BandPlanChoice {

/// Adds a menu with the regions, and shows what was chosen the last time.
void AddTo(QMenu& menu, FrequencyBar& bar);

} // namespace BandPlanChoice
