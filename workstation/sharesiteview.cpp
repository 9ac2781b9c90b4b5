#include "workstation/sharesiteview.h"

#include "controls/frequencystore/common/csvallowed.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodemediatorctrl.h"
#include "host/gui/guibase.h"
#include "host/report/filework.h"
#include "link/listclient.h"
#include "workstation/sharekinds.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QPointer>

namespace {

using Bar = FreqStoreListViewButtonBar;

constexpr char TraceSource[] = "sharesiteview";

} // namespace

ShareSiteView::ShareSiteView(QWidget* parent, unsigned listId, const Source& source)
    : EntryListView(parent, listId, SettingsName.data()), m_source(source) {
    AddColumns(source.kind->columns(), source.kind->Name());
    connect(this, &SortListView::doubleClicked, this, &ShareSiteView::edit);
    connect(this, &SortListView::returnPressed, this, &ShareSiteView::edit);
}

QString ShareSiteView::EmptyText() const {
    return TextOfNone(m_source.reader);
}

QString ShareSiteView::TextOfNone(const ListReader* reader) {
    return reader && reader->GetState() == ListReader::State::Whole
               ? tr("The seat that serves this list has no entries in it.")
               : tr("The entries come when the seat that serves this list is there.");
}

void ShareSiteView::InitFreqStoreWidget(FreqStoreListViewButtonBar* bar) {
    if (!bar)
        return;
    FrequencyNodeListView::InitFreqStoreWidget(bar);
    bar->SetCaption(m_source.title);
    bar->SetTip(Bar::Save, tr("Write a copy of the list into a file of this machine"));
    ShowActions(*bar, {Bar::Copy, Bar::Paste, Bar::New, Bar::Edit, Bar::Delete, Bar::Save});
    OfferCsv({bar->GetAction(Bar::Export)}, CsvIsAllowed());
    if (!AttachToBar(*bar))
        return;
    ConnectActions<ShareSiteView>(*bar, {{Bar::Copy, &ShareSiteView::copy},
                                         {Bar::Paste, &ShareSiteView::paste},
                                         {Bar::New, &ShareSiteView::addNew},
                                         {Bar::Edit, &ShareSiteView::edit},
                                         {Bar::Delete, &ShareSiteView::DeleteSelectedEntries},
                                         {Bar::Save, &ShareSiteView::save},
                                         {Bar::Export, &ShareSiteView::exportCsv}});
}

/// While the list's definition is taken out the client may have ended; the controller says so.
QString ShareSiteView::WhyOff(int action) const {
    const bool edits =
        action == Bar::New || action == Bar::Edit || action == Bar::Paste || action == Bar::Delete;
    const QString reason = edits && Controller() ? m_source.client->WhyNoEditing() : QString();
    return reason.isEmpty() ? reason : tr("The list is one of another seat: %1.").arg(reason);
}

void ShareSiteView::addNew() {
    if (!List())
        return;
    m_source.kind->add(*m_source.node, nullptr);
    List()->ForceUpdateNow();
    if (List()->size() > 0)
        MakeCurrent(List()->size() - 1);
}

void ShareSiteView::edit() {
    if (const auto entries = SelectedInOrder(); !entries.empty() && WhyOff(Bar::Edit).isEmpty())
        RunEditor(entries, m_source.kind->mediators, m_source.title, QStringLiteral("Shared Entry Editor"));
}

void ShareSiteView::copy() {
    CopyEntries(TraceSource);
}

void ShareSiteView::paste() {
    PasteClipboard(TraceSource);
}

void ShareSiteView::write(const QString& title, const QString& filter, const QString& suffix,
                          const std::function<bool(FrequencyNodeMediatorCtrl&, const QString&)>& write) {
    const QPointer<ShareSiteView> alive(this); // the list may go while the dialog is open
    QString path = QFileDialog::getSaveFileName(this, title, GuiBase::Instance().GetCurrentDirectory(),
                                                filter, nullptr, GuiBase::Instance().UseNativeDialogs());
    if (path.isEmpty() || !alive || !List())
        return;
    if (!path.contains(suffix))
        path += suffix;
    if (REPORTGENERATOR::WriteAsWork(path, [&] { return write(*List(), path); }))
        emit FreqStore::Instance().Told(tr("A copy was written to %1").arg(QFileInfo(path).fileName()));
}

void ShareSiteView::save() {
    write(tr("Save a Copy of the List"), tr("XML Lists") + QStringLiteral(" (*.xml)"), QStringLiteral(".xml"),
          [](FrequencyNodeMediatorCtrl& list, const QString& path) { return list.SaveFrequencies(path); });
}

void ShareSiteView::exportCsv() {
    write(tr("Export List"), tr("CSV Lists") + QStringLiteral(" (*.csv)"), QStringLiteral(".csv"),
          [](FrequencyNodeMediatorCtrl& list, const QString& path) {
              return list.ExportFrequencies(path, FreqStoreXml::FrequencyStoreListHelper::Targets);
          });
}
