#include "workstation/sweepimport.h"

#include "host/base/longwork.h"
#include "host/base/problems.h"
#include "host/gui/guibase.h"
#include "host/report/filework.h"
#include "host/valuetree/operatoraction.h"
#include "sweep/sweepfile.h"
#include "sweep/sweepresults.h"
#include "workstation/sweepdialog.h"

#include <QFileDialog>
#include <QFileInfo>

namespace {

/// What a file held.
struct Found {
    SweepSummary summary;
    std::list<DetectionConventional> detections;
    std::shared_ptr<Waterfall> picture = std::make_shared<Waterfall>();
};

Found lookInto(const QString& path, const SweepSettings& settings, const QTimeZone& zone) {
    Found found;
    SweepDetector detector(
        settings, [&](const SweepDetection& detection) { found.detections.push_back(RecordOf(detection)); });
    found.summary = ReadSweepFile(path, zone, [&](const Sweep& sweep) {
        detector.Add(sweep);
        found.picture->Add(sweep);
    });
    detector.Finish();
    found.picture->Finish();
    return found;
}

} // namespace

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
    const OperatorAction action(tr("Open Sweep"));
    Found found;
    const auto look = [&] {
        LongWork::Elsewhere([&] { found = lookInto(path, m_settings, m_zone); });
        return true;
    };
    if (!REPORTGENERATOR::ReadAsWork(path, look))
        return false;
    const QString name = QFileInfo(path).fileName();
    const QString told =
        tr("%1: %2 detections in %3 sweeps")
            .arg(name, QString::number(found.detections.size()), QString::number(found.summary.sweeps));
    m_receive(std::move(found.detections), name);
    if (found.summary.sweeps == 0 && found.summary.problems == 0)
        Problems::Report("sweepimport", {path, 0, tr("holds no power sweeps")});
    if (!found.picture->IsEmpty())
        emit SweepsRead(found.picture);
    emit Opened(told);
    return found.summary.sweeps > 0;
}
