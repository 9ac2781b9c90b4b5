#include "workstation/sharesitelist.h"

#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/detections/detconvlisthandler.h"
#include "controls/frequencystore/detections/detectionlistviewfactory.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/pixstatevector.h"
#include "host/valuetree/tree.h"
#include "link/topics.h"
#include "workstation/sharerecordkind.h"
#include "workstation/sharesiteview.h"

#include <QCoreApplication>
#include <QPointer>

namespace {

constexpr int BarSymbol = 2;

Node* makeNode(const QString& site, const ShareKind& kind) {
    return Tree::Instance()->MakeNode(
        QStringLiteral("%1/%2/%3")
            .arg(ShareSiteList::Root, QString::fromLatin1(Topics::Escaped(site)), kind.Name()));
}

PixStateVector* makeLine(const QString& path) {
    auto* line = new PixStateVectorOnNode;
    line->Init(path);
    line->SetKeyWords(Keys::KeyFrequency.Text(), Keys::KeyBandwidth.Text(), Keys::KeyType.Text(),
                      Keys::KeyComment.Text());
    line->SetSymbol(BarSymbol);
    line->SetFixedType('a');
    return line;
}

} // namespace

ShareSiteList::ShareSiteList(Seat& seat, const QString& site, const ShareKind& kind, const QPixmap& icon)
    : m_kind(kind), m_node(makeNode(site, kind)), m_reader(std::make_unique<ListReader>(seat, kind.Name())) {
    const QString title = QCoreApplication::translate("ShareSiteList", "%1 (%2)").arg(kind.Title(), site);
    ListRegistration list = kind.records ? records(title) : entries(title);
    list.name = title;
    list.icon = icon;
    m_listId = FreqStore::Instance().RegisterList(std::move(list));
}

ShareSiteList::~ShareSiteList() {
    FreqStore::Instance().RemoveFrequencyListDefinition(m_listId);
    m_records.reset();
    m_client.reset();
    m_controller.reset();
    m_node->GetParentNode()->DeleteNode(m_node);
}

ListRegistration ShareSiteList::entries(const QString& title) {
    m_controller = std::make_unique<HalvoNodeMediatorCtrl>(m_kind.mediators, m_kind.storeType);
    m_client = std::make_unique<ListClient>(*m_reader, m_kind.ListOf(*m_node));
    m_controller->SetEntryMaker(
        [this](const FreqStoreXml::FrequencyStoreEntry& entry) { m_kind.add(*m_node, &entry); });
    m_controller->Init(m_node->GetPathName());
    m_controller->IncrementVisibleCnt();
    return {
        .pixStateFactory = [path = m_node->GetPathName()] { return makeLine(path); },
        .controller = m_controller.get(),
        .viewFactory = [this, title](QWidget* parent, unsigned id) -> FrequencyStoreListView* {
            return new ShareSiteView(parent, id, {&m_kind, m_node, m_client.get(), m_reader.get(), title});
        }};
}

ListRegistration ShareSiteList::records(const QString& title) {
    const DetectionPaths paths{m_node->GetPathName() + QStringLiteral("/Records"),
                               m_node->GetPathName() + QStringLiteral("/Marked")};
    GetOrCreateValue<ValueList<double>>(paths.marked);
    m_records = std::make_unique<RecordClient>(*m_reader, *m_kind.records->makeList(paths.emissions));
    const DetectionTexts texts{
        ShareSiteView::SettingsName + m_kind.Name(), title,
        [reader = QPointer(m_reader.get())] { return ShareSiteView::TextOfNone(reader); }};
    return {.pixStateFactory = [&kind = *m_kind.records, paths] { return kind.makeLine(paths); },
            .available4WideView = false, // as the local lists of detections
            .viewFactory = [&kind = *m_kind.records, paths,
                            texts](QWidget* parent,
                                   unsigned id) { return kind.makeView(parent, id, paths, texts); }};
}

QString ShareSiteList::StateText() const {
    return m_records && m_records->IsOfOtherKind()
               ? QCoreApplication::translate("ShareSiteList", "its records are of another kind")
               : m_reader->StateText();
}
