#include "workstation/sweepimport.h"

#include "host/base/problems.h"
#include "host/gui/guibase.h"
#include "host/valuetree/operatoraction.h"
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

} // namespace

/// What comes and goes with one file.
struct SweepImport::Reading {
    qint64 count = 0;
    std::list<DetectionConventional> waiting; ///< detections that are not handed over yet
    std::unique_ptr<QProgressDialog> dialog;
};

SweepImport::SweepImport(QWidget* window, Receive receive)
    : m_window(window), m_receive(std::move(receive)) {}

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
    if (m_isReading) {
        Problems::Report("sweepimport", {path, 0, tr("another file of sweeps is being read")});
        return false;
    }
    const OperatorAction action(tr("Open Sweep"));
    const QScopedValueRollback isReading(m_isReading, true);
    Reading reading;
    m_fileName = QFileInfo(path).fileName();
    auto picture = std::make_shared<Waterfall>();
    SweepDetector detector(m_settings, [&](const SweepDetection& detection) {
        reading.waiting.push_back(RecordOf(detection));
        ++reading.count;
    });
    const SweepSummary summary = ReadSweepFile(
        path, m_zone,
        [&](const Sweep& sweep) {
            detector.Add(sweep);
            picture->Add(sweep);
        },
        [&](qint64 done, qint64 total) { return showProgress(reading, done, total); });
    detector.Finish();
    picture->Finish();
    m_receive(std::move(reading.waiting));
    if (summary.sweeps == 0 && summary.problems == 0)
        Problems::Report("sweepimport", {path, 0, tr("holds no power sweeps")});
    if (!picture->IsEmpty())
        emit SweepsRead(picture);
    emit Opened(tr("%1: %2 detections in %3 sweeps")
                    .arg(m_fileName, QString::number(reading.count), QString::number(summary.sweeps)));
    return summary.sweeps > 0;
}

/// False when the operator has cancelled.
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
    m_receive(std::exchange(reading.waiting, {}));
    reading.dialog->setValue(step);
    return !reading.dialog->wasCanceled();
}
