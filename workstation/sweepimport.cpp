#include "workstation/sweepimport.h"

#include "host/base/problems.h"
#include "host/gui/guibase.h"
#include "host/valuetree/tree.h"
#include "sweep/sweepfile.h"
#include "sweep/sweepresults.h"
#include "workstation/sweepdialog.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QProgressDialog>
#include <QScopedValueRollback>

namespace {

/// Files up to this size are read before anybody could press a button.
constexpr qint64 QuickBytes = 4 * 1024 * 1024;
constexpr int ProgressSteps = 1000;

unsigned highestId(const SweepImport::List& list) {
    unsigned highest = 0;
    for (const DetectionConventional& record : list.Elements())
        highest = std::max(highest, record.GetID());
    return highest;
}

} // namespace

/// What comes and goes with one file. The list may end while the dialog runs.
struct SweepImport::Reading {
    ValuePtr<List> list;
    unsigned lastId;
    qint64 count = 0;
    List::Container waiting; ///< detections that the list has not got yet
    std::unique_ptr<QProgressDialog> dialog;

    void Deliver() {
        if (List* value = list.get())
            value->Append(std::exchange(waiting, {}));
    }
};

SweepImport::SweepImport(QWidget* window, const QString& listPath) : m_window(window), m_listPath(listPath) {}

void SweepImport::AskAndOpen() {
    const QString path = QFileDialog::getOpenFileName(
        m_window, tr("Open Sweep"), GuiBase::Instance().GetCurrentDirectory(),
        tr("Power sweeps (*.csv);;All files (*)"), nullptr, GuiBase::Instance().UseNativeDialogs());
    if (path.isEmpty())
        return;
    SweepDialog dialog(m_settings, m_zone, m_window);
    if (dialog.exec() != QDialog::Accepted)
        return;
    m_settings = dialog.GetSettings();
    m_zone = dialog.GetZone();
    Open(path);
}

bool SweepImport::Open(const QString& path) {
    auto* list = value_cast<List>(Tree::Instance()->GetValue(m_listPath));
    if (!list || m_isReading) {
        Problems::Report(
            "sweepimport", 67,
            {path, 0, list ? tr("another file is being read") : tr("there is no list of detections")});
        return false;
    }
    const QScopedValueRollback reading(m_isReading, true);
    Reading now{ValuePtr<List>(list), highestId(*list), 0, {}, nullptr};
    const SweepSummary summary = DetectInSweepFile(
        path, m_zone, m_settings,
        [&](const SweepDetection& detection) {
            now.waiting.push_back(RecordOf(detection, ++now.lastId));
            ++now.count;
        },
        [&](qint64 done, qint64 total) { return showProgress(now, done, total); });
    now.Deliver();
    if (summary.sweeps == 0 && summary.problems == 0)
        Problems::Report("sweepimport", 82, {path, 0, tr("holds no power sweeps")});
    emit Opened(
        tr("%1: %2 detections in %3 sweeps")
            .arg(QFileInfo(path).fileName(), QString::number(now.count), QString::number(summary.sweeps)));
    return summary.sweeps > 0;
}

/// False when the operator has cancelled, or the list is gone.
bool SweepImport::showProgress(Reading& reading, qint64 done, qint64 total) {
    if (total <= QuickBytes)
        return true;
    if (!reading.dialog) {
        reading.dialog = std::make_unique<QProgressDialog>(tr("Looking for signals..."), tr("Cancel"), 0,
                                                           ProgressSteps, m_window);
        reading.dialog->setWindowTitle(tr("Open Sweep"));
        reading.dialog->setWindowModality(Qt::WindowModal);
        reading.dialog->setMinimumDuration(0);
    }
    const auto step = static_cast<int>(double(done) / double(total) * (ProgressSteps - 1));
    if (step == reading.dialog->value())
        return true;
    reading.Deliver();
    reading.dialog->setValue(step);
    return !reading.dialog->wasCanceled() && reading.list.get();
}
