#pragma once

#include <vector>

class MainWindow;
class QMenu;
class SimulatedSearch;
class SweepImport;

/// What the workstation offers for detections beside their lists.
namespace DetectionPanels {

/// Adds the time picture as a panel, hidden at first, which shows the frequencies that the bar shows and the
/// sweeps that are opened; `listIds` are the program's own lists of detections, plain ones first. Of other
/// lists it shows the one that was looked at last. Window, search and import outlive it.
void AddPicture(MainWindow& window, SimulatedSearch& search, SweepImport& sweeps,
                const std::vector<int>& listIds);
/// Adds "Newest first", for all lists of detections, and "Clear detections", for the program's own, to a
/// menu.
void AddActions(QMenu& menu, MainWindow& window, SimulatedSearch& search, const std::vector<int>& listIds);

} // namespace DetectionPanels
