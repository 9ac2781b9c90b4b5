#pragma once

#include <vector>

class MainWindow;
class QMenu;
class SimulatedSearch;
class SweepImport;

/// What the workstation offers for detections beside their lists.
namespace DetectionPanels {

/// Adds the time picture as a panel, hidden at first, which shows the frequencies that the bar shows and the
/// sweeps that are opened; `listId` is the list of plain detections. Window, search and import outlive it.
void AddPicture(MainWindow& window, SimulatedSearch& search, SweepImport& sweeps, int listId);
/// Adds "Newest first", for these lists of detections, and "Clear detections" to a menu.
void AddActions(QMenu& menu, MainWindow& window, SimulatedSearch& search, const std::vector<int>& listIds);

} // namespace DetectionPanels
