#pragma once

#include "controls/frequencystore/noi/noifrequencyhandler.h"
#include "tests/support/dialogs.h"
#include "tests/workstation/stationfixture.h"
#include "workstation/recoverydialog.h"
#include "workstation/recoverywriter.h"
#include "workstation/safekeeping.h"

#include <QPushButton>

/// A list file of frequencies of interest.
inline QByteArray listOf(int entries) {
    QByteArray text = "<?xml version=\"1.0\"?>\n<FrequencyStoreList Version=\"1\" Usage=\"NOI\">\n";
    for (int i = 0; i < entries; ++i)
        text += "<FrequencyStoreEntry><Comment>c</Comment><FFM_Settings><Frequency>" +
                QByteArray::number(7000000 + i) + "</Frequency></FFM_Settings></FrequencyStoreEntry>\n";
    return text + "</FrequencyStoreList>\n";
}

/// A workstation, and what it and others leave in the data directory.
class Recoveries : public Workstations {
protected:
    static constexpr char Noi[] = "/Lists/NOIFrequencies";

    static NOIFrequencyHandler& noi() { return *NOIFrequencyHandler::Instance(); }
    Recovery& recovery() { return station->GetSafekeeping().GetRecovery(); }
    QDir folder() const { return QDir(Path("data/recovery")); }
    QStringList files() const { return folder().entryList({"*.recovery"}, QDir::Files); }
    /// Leaves a recovery file with this content of a list, as a process that was killed does.
    void leave(const char* key, const QString& file, const QByteArray& content, int entries = 1,
               const QString& name = "dead.recovery") {
        QDir().mkpath(folder().path());
        RecoveryWriter writer(folder().filePath(name));
        writer.Begin();
        writer.BeginSection({key, qstrcmp(key, "job") == 0 ? ".pij" : ".xml", 1'000'000, file, 0});
        writer.Append(content);
        writer.EndSection(entries);
        writer.Commit();
    }
    /// The same of so many frequencies of interest.
    void leave(int entries, const QString& name = "dead.recovery") {
        leave("noi", QString(), listOf(entries), entries, name);
    }
    void startAttended() {
        start({});
        station->SetAttended(true);
    }
    void answer(const char* button) {
        WhenOpen<RecoveryDialog>([button](RecoveryDialog& dialog) {
            dialog.findChild<QPushButton*>(QLatin1String(button))->click();
            if (dialog.isVisible())
                dialog.reject();
        });
    }
};
