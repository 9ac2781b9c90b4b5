#pragma once

class FrequencyStoreListView;
class QWidget;
struct DetectionPaths;

// Where the handler of detections meets their views; the parents own these.

/// Views over a list of the given place.
FrequencyStoreListView* MakeDetectionView(QWidget* parent, unsigned listId, const DetectionPaths& paths);
FrequencyStoreListView* MakeExtendedDetectionViewHF(QWidget* parent, unsigned listId,
                                                    const DetectionPaths& paths);
FrequencyStoreListView* MakeExtendedDetectionViewVUHF(QWidget* parent, unsigned listId,
                                                      const DetectionPaths& paths);

/// The same over the list whose paths the handler has when the view is made, for windows of the host's own.
FrequencyStoreListView* CreateSearchMCVectorListView(QWidget* parent, unsigned listId);
FrequencyStoreListView* CreateSearchMCExtendedVectorListViewHF(QWidget* parent, unsigned listId);
FrequencyStoreListView* CreateSearchMCExtendedVectorListViewVUHF(QWidget* parent, unsigned listId);
/// Over mediators.
FrequencyStoreListView* CreateDetectionConventionalListView(QWidget* parent, unsigned listId);
