#pragma once

#include "controls/frequencystore/files/filerecords.h"
#include "host/report/fileversions.h"

#include <QDialog>
#include <QTimer>

#include <memory>
#include <vector>

class QDialogButtonBox;
class QTreeWidget;
struct ListFile;

/// The kept versions of a list's file, newest first, with what was changed between each and what the list
/// holds now. They are read one by one while the dialog is open. Accepted when one is to be restored.
class VersionsDialog : public QDialog {
    Q_OBJECT

public:
    VersionsDialog(const ListFile& list, std::vector<FileVersions::Version> versions,
                   QWidget* parent = nullptr);

    /// The version that is chosen; null when none is.
    const FileVersions::Version* GetChosen() const;

private:
    void addTable(const QString& file);
    void readNext();
    void readList(const ListFile& list);
    QString sinceText(const FileRecords& then) const;

    const std::vector<FileVersions::Version> m_versions;
    std::unique_ptr<FileRecords> m_now; ///< what the list holds
    size_t m_read = 0;                  ///< versions that have been compared
    QTimer m_reading;
    QTreeWidget* m_table;
    QDialogButtonBox* m_buttons;
};
