#pragma once

#include "workstation/listfiles.h"
#include "workstation/recoverydialog.h"
#include "workstation/recoveryfile.h"

#include <QCoreApplication>

#include <memory>

class QLockFile;
class QWidget;
class Recovery;

/// What processes that have ended left unsaved in the data directory. Their files are held while this lives,
/// so that two windows never offer the same.
class RecoveryOffer {
    Q_DECLARE_TR_FUNCTIONS(RecoveryOffer)

public:
    /// `lists` and `recovery`, whose own file is passed over, outlive this.
    RecoveryOffer(const QString& dataFolder, const ListFiles& lists, Recovery& recovery);
    ~RecoveryOffer();

    bool IsEmpty() const { return m_rows.empty(); }
    /// Nothing is offered of a list that was saved when its process ended. It takes that file, unless it has
    /// another one or entries.
    void OpenSaved() const;
    /// What there is, in words, for when nobody can be asked.
    QString GetText() const;
    /// Asks what becomes of it and does that. A list takes the file that it had, before it takes what was not
    /// saved in it.
    void Ask(QWidget* window);

private:
    struct File {
        RecoveryReader reader;
        std::unique_ptr<QLockFile> lock;
        size_t left; ///< sections that nothing was done about
    };
    struct Row {
        File* file;
        const RecoverySection* section;
        const ListFile* list;
    };

    void takeRows(const ListFiles& lists, File& file);
    static RecoveryDone doneWith(const Row& row);
    void restore(const std::vector<size_t>& rows);
    bool restore(const Row& row);
    void saveAs(QWidget* window, const Row& row);
    std::vector<RecoveryRow> describe() const;

    Recovery& m_recovery;
    std::vector<std::unique_ptr<File>> m_files;
    std::vector<Row> m_rows; ///< newest first
    std::vector<std::pair<const ListFile*, QString>> m_saved;
};
