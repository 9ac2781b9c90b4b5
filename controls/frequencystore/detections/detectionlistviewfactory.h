#pragma once

#include <QString>

#include <functional>

class FrequencyStoreListView;
class QWidget;
struct DetectionPaths;

/// What the view of a list that no search of this program writes calls itself; what is empty is that of the
/// program's own lists.
struct DetectionTexts {
    QString settings; ///< name under which columns are remembered
    QString caption;
    std::function<QString()> emptyText;
};

// Where the handler of detections meets their views; the parents own these.

/// Views over a list of the given place.
FrequencyStoreListView* MakeDetectionView(QWidget* parent, unsigned listId, const DetectionPaths& paths,
                                          const DetectionTexts& texts);
FrequencyStoreListView* MakeExtendedDetectionViewHF(QWidget* parent, unsigned listId,
                                                    const DetectionPaths& paths, const DetectionTexts& texts);
FrequencyStoreListView* MakeExtendedDetectionViewVUHF(QWidget* parent, unsigned listId,
                                                      const DetectionPaths& paths,
                                                      const DetectionTexts& texts);

/// The same over the list whose paths the handler has when the view is made, for windows of the host's own.
FrequencyStoreListView* CreateSearchMCVectorListView(QWidget* parent, unsigned listId);
FrequencyStoreListView* CreateSearchMCExtendedVectorListViewHF(QWidget* parent, unsigned listId);
FrequencyStoreListView* CreateSearchMCExtendedVectorListViewVUHF(QWidget* parent, unsigned listId);
/// Over mediators.
FrequencyStoreListView* CreateDetectionConventionalListView(QWidget* parent, unsigned listId);
