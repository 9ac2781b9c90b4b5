#pragma once

#include <QString>

class FrequencyStoreListView;
class PixStateVector;
class QWidget;
class ValueBase;
struct DetectionPaths;
struct DetectionTexts;

/// How records of another seat are shown.
struct ShareRecordKind {
    /// The list of records at a path of the tree, new if there is none.
    ValueBase* (*makeList)(const QString& path);
    /// The caller owns it.
    PixStateVector* (*makeLine)(const DetectionPaths& paths);
    /// The parent owns it.
    FrequencyStoreListView* (*makeView)(QWidget* parent, unsigned listId, const DetectionPaths& paths,
                                        const DetectionTexts& texts);
};

extern const ShareRecordKind PlainDetections;
extern const ShareRecordKind DetectionsOfHF;
extern const ShareRecordKind DetectionsOfVUHF;
