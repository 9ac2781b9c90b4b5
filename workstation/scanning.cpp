#include "workstation/scanning.h"

#include "controls/frequencystore/memory/memorysystemhandler.h"
#include "host/base/numbers.h"
#include "host/base/problems.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodemediatorctrl.h"
#include "host/freqlist/vectorlistviewbase.h"
#include "host/gui/listsettings.h"
#include "receiver/receiver.h"
#include "workstation/jobpanel.h"
#include "workstation/mainwindow.h"
#include "workstation/noibands.h"
#include "workstation/scanactions.h"
#include "workstation/scanpanel.h"
#include "workstation/simulatedsearch.h"
#include "workstation/tuningstrip.h"

#include <QAction>
#include <QDockWidget>
#include <QMenu>
#include <QScrollArea>

namespace {

constexpr int PanelHeight = 400;

QString settingName(Names::Id key) {
    return QStringLiteral("Scan/") + Names::Text(key);
}

} // namespace

Scanning::Scanning(const Parts& parts)
    : m_parts(parts), m_port(parts.receiver), m_detections(parts.search), m_scan(m_port, m_clock) {
    m_scan.SetPlan(ScanSource::MemoryChannels, [this](QString& reason) { return planChannels(reason); });
    m_scan.SetPlan(ScanSource::NoiBands, [this](QString& reason) { return planBands(reason); });
    connect(&m_scan, &Scan::StopChanged, this, [this](const ScanStop& stop) { m_detections.Write(stop); });
    connect(&m_scan, &Scan::RunningChanged, this, &Scanning::follow);
    for (const auto told : {&Scan::Ended, &Scan::StepLeftOut})
        connect(&m_scan, told, this, [](const QString& reason) {
            Problems::Report("scanning", {tr("Scan"), 0, reason});
        });
    loadSettings();
    addToWindow();
    showNotes();
}

Scanning::~Scanning() {
    m_scan.Stop();
    disconnect(&m_scan, nullptr, this, nullptr);
}

void Scanning::addToWindow() {
    QMenu* menu = m_parts.window.AddMenu(tr("S&can"));
    const auto* actions = new ScanActions(*menu, m_scan, m_parts.receiver); // the menu's
    auto* area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(new ScanPanel(m_scan, *actions));
    QDockWidget* dock = m_parts.window.AddPanel(area, tr("&Scan"), Qt::RightDockWidgetArea);
    dock->hide();
    // The first time it is asked for, it gets room from the panels above.
    connect(
        dock->toggleViewAction(), &QAction::triggered, dock,
        [this, dock](bool shown) {
            if (shown)
                m_parts.window.resizeDocks({dock}, {PanelHeight}, Qt::Vertical);
        },
        Qt::SingleShotConnection);
    TuningStrip* strip = m_parts.window.GetStrip();
    strip->AddActivity({tr("Scan"), [this] { return m_scan.IsRunning(); },
                        [this] {
                            return tr("%Ln signal(s)", nullptr,
                                      static_cast<int>(m_scan.GetScanner().GetCounts().stops));
                        },
                        [this] { m_scan.Stop(); }});
    connect(&m_scan, &Scan::RunningChanged, strip, &TuningStrip::Refresh);
}

/// Whose a detection is, and for a stop on a channel which one.
void Scanning::showNotes() {
    auto* view = dynamic_cast<VectorListViewBase*>(m_parts.window.ViewOf(m_parts.detections));
    if (!view)
        return;
    view->SetRecordNote(SimulatedSearch::tr("Source"), [this](unsigned id) {
        const QString source = m_parts.search.SourceOf(id);
        const QString note = m_detections.NoteOf(id);
        return note.isEmpty() ? source : tr("%1: %2").arg(source, note);
    });
    view->SetRecordComment([this](unsigned id) { return m_detections.CommentOf(id); });
}

std::unique_ptr<ScanPlan> Scanning::planChannels(QString& reason) const {
    auto* list = dynamic_cast<FrequencyNodeMediatorCtrl*>(
        FreqStore::Instance().GetFrequencies(static_cast<unsigned>(m_parts.channels)));
    if (list)
        return std::make_unique<ChannelPlan>(*list);
    reason = tr("There is no list of memory channels.");
    return nullptr;
}

std::unique_ptr<ScanPlan> Scanning::planBands(QString& reason) const {
    std::vector<SpanPlan::Span> spans;
    for (const NoiBands::Band& band : m_parts.window.GetBands().GetBands())
        spans.push_back({band.from, band.to});
    return m_scan.MakeSpans(std::move(spans), tr("There are no NOI bands."), reason);
}

void Scanning::follow(bool isRunning) {
    MemorySystemHandler::Instance()->SetInScanSurveillance(m_scan.IsScanningChannels());
    closeJob(m_scan.IsScanningChannels());
    m_parts.window.SetTellsTuning(!isRunning);
    m_parts.window.Tell(isRunning ? tr("The scan has begun") : tr("The scan has ended"));
    if (isRunning)
        saveSettings();
}

/// The job is not to change under a receiver that goes through its channels.
void Scanning::closeJob(bool isClosed) {
    const QString reason =
        isClosed ? tr("The memory channels are being scanned: no job is opened or saved.") : QString();
    m_parts.job.SetWhyOff(reason);
    for (const char* name : {"open-job", "save-job", "save-job-as"}) {
        auto* action = m_parts.window.GetFileMenu()->findChild<QAction*>(QLatin1String(name));
        if (!action)
            continue;
        const QString tip = action->toolTip().section(QLatin1Char('\n'), 0, 0);
        action->setEnabled(!isClosed);
        action->setToolTip(isClosed ? tip + QLatin1Char('\n') + reason : tip);
        action->setStatusTip(isClosed ? reason : tip);
    }
}

void Scanning::loadSettings() {
    if (!m_parts.remembers)
        return;
    for (const ScanValue& setting : ScanSettingValues()) {
        const QString text = ListSettings::LoadText(settingName(setting.key));
        double number = 0;
        if (!Quor::ParseDouble(text, number))
            continue;
        ValueBase* value = m_scan.GetValues().Find(setting.key);
        if (auto* choice = value_cast<ValueSelection>(value))
            choice->Select(static_cast<long>(number));
        else if (number >= setting.min && number <= setting.max)
            value->SetStringValue(text);
    }
}

/// A choice by its number, which is the same in each language.
void Scanning::saveSettings() const {
    if (!m_parts.remembers)
        return;
    for (const ScanValue& setting : ScanSettingValues()) {
        const ValueBase* value = m_scan.GetValues().Find(setting.key);
        const auto* choice = value_cast<ValueSelection>(value);
        ListSettings::SaveText(settingName(setting.key),
                               choice ? QString::number(choice->GetCurrentKey()) : value->GetStringValue());
    }
}
