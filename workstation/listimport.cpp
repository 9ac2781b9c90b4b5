#include "workstation/listimport.h"

#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/common/sendto.h"
#include "controls/frequencystore/merge/fileentries.h"
#include "controls/frequencystore/merge/listmerge.h"
#include "host/base/frequencytext.h"
#include "host/base/longwork.h"
#include "host/base/problems.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodelistview.h"
#include "host/freqlist/frequencynodemediator.h"
#include "host/gui/guibase.h"
#include "workstation/filekinds.h"
#include "workstation/foreignimport.h"
#include "workstation/memoryneed.h"
#include "workstation/mergedialog.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QPointer>

namespace ListImport {

namespace {

constexpr char TraceSource[] = "listimport";

QString tr(const char* text, const char* comment = nullptr, int n = -1) {
    return QCoreApplication::translate("ListImport", text, comment, n);
}

HalvoNodeMediatorCtrl* listOf(unsigned listId) {
    return dynamic_cast<HalvoNodeMediatorCtrl*>(FreqStore::Instance().GetFrequencies(listId));
}

bool readAndMerge(QWidget& window, unsigned listId, const QString& path) {
    HalvoNodeMediatorCtrl* const list = listOf(listId);
    const QString refusal = ListMerge::WhyOff(list);
    const auto entries = refusal.isEmpty() ? ReadFileEntries(path, list->GetMediatorType()) : std::nullopt;
    if (!refusal.isEmpty())
        Problems::Report(TraceSource, {path, 0, refusal});
    return entries && Merge(window, listId, QFileInfo(path).fileName(), *entries);
}

std::vector<FrequencyNodeMediator*> findDuplicates(FrequencyNodeMediatorCtrl& list, double tolerance) {
    EntryMerge::KeyMaker maker;
    std::vector<EntryMerge::Key> keys;
    std::vector<FrequencyNodeMediator*> mediators;
    list.ForEachInWork([&](FrequencyNodeMediator& mediator) {
        double hertz = std::numeric_limits<double>::quiet_NaN();
        mediator.GetFrequency(hertz, 0);
        keys.push_back(maker.Of(hertz, mediator.GetDemodulationString(0)));
        mediators.push_back(&mediator);
    });
    std::vector<quint32> places;
    LongWork::Elsewhere([&] { places = EntryMerge::FindDuplicates(keys, tolerance); });
    std::vector<FrequencyNodeMediator*> duplicates;
    duplicates.reserve(places.size());
    for (const quint32 place : places)
        duplicates.push_back(mediators[place]);
    return duplicates;
}

} // namespace

void AskAndImport(QWidget& window, unsigned listId) {
    const QPointer<QWidget> alive(&window);
    const QStringList paths = QFileDialog::getOpenFileNames(
        &window, tr("Import into List"), GuiBase::Instance().GetCurrentDirectory(), KnownFilesFilter(),
        nullptr, GuiBase::Instance().UseNativeDialogs());
    for (const QString& path : paths) {
        if (!alive || !Import(window, listId, path))
            return;
    }
}

bool Import(QWidget& window, unsigned listId, const QString& path) {
    const FileKind kind = FileKindOf(path);
    if (kind == FileKind::Foreign || kind == FileKind::Table)
        return ForeignImport::Ask(window, ForeignSource(path),
                                  ForeignImport::Propose(listId, ForeignImport::Way::Add));
    return WithinMemory(path, false, [&] { return readAndMerge(window, listId, path); });
}

bool Merge(QWidget& window, unsigned listId, const QString& fileName,
           const QVector<FreqStoreXml::FrequencyStoreEntry>& entries) {
    FreqStore& store = FreqStore::Instance();
    if (entries.isEmpty()) {
        emit store.Told(tr("%1 holds no entries").arg(fileName));
        return false;
    }
    ListMerge merge(*listOf(listId), entries);
    const QString name = store.GetDefinition(static_cast<int>(listId))->GetName();
    const QPointer<MergeDialog> dialog(
        new MergeDialog(merge, tr("%1 into %2").arg(fileName, name), SendTo::Tolerance(), &window));
    const bool isAccepted = !merge.WasCancelled() && dialog->exec() == QDialog::Accepted;
    const bool isAlive = dialog; // the window may have ended
    delete dialog;
    if (!isAccepted || !isAlive)
        return false;
    const ListMerge::Plan plan = merge.GetPlan();
    if (!merge.Apply()) {
        if (merge.WasCancelled())
            return false;
        Problems::Report(TraceSource, {fileName, 0, tr("was not imported: the list has changed meanwhile")});
        return false;
    }
    emit store.Told(tr("%1: %2 added, %3 changed, %4 left")
                        .arg(fileName)
                        .arg(plan.added)
                        .arg(plan.changed)
                        .arg(plan.left + plan.refused));
    return true;
}

QString SelectDuplicates(FrequencyNodeListView& view) {
    auto* const list =
        dynamic_cast<FrequencyNodeMediatorCtrl*>(FreqStore::Instance().GetFrequencies(view.GetID()));
    if (!list)
        return QString();
    list->ForceUpdateNow();
    const double tolerance = SendTo::Tolerance();
    std::vector<FrequencyNodeMediator*> duplicates;
    if (!LongWork::Run(tr("Looking for duplicates"), [&] { duplicates = findDuplicates(*list, tolerance); }))
        return QString();
    view.clearSelection();
    if (duplicates.empty())
        return tr("No two entries within %1").arg(Quor::BandwidthText(tolerance));
    view.SelectRowsOf(duplicates);
    return tr("%n duplicates within %1 selected; the first of each stays unselected", "",
              static_cast<int>(duplicates.size()))
        .arg(Quor::BandwidthText(tolerance));
}

} // namespace ListImport
