#include "workstation/sharesitelist.h"

#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/pixstatevector.h"
#include "host/valuetree/tree.h"
#include "link/topics.h"
#include "workstation/sharesiteview.h"

#include <QCoreApplication>

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
    : m_kind(kind),
      m_node(makeNode(site, kind)),
      m_controller(std::make_unique<HalvoNodeMediatorCtrl>(kind.mediators, kind.storeType)),
      m_reader(std::make_unique<ListReader>(seat, kind.Name())),
      m_client(std::make_unique<ListClient>(*m_reader, kind.ListOf(*m_node))) {
    m_controller->SetEntryMaker(
        [this](const FreqStoreXml::FrequencyStoreEntry& entry) { m_kind.add(*m_node, &entry); });
    m_controller->Init(m_node->GetPathName());
    m_controller->IncrementVisibleCnt();
    const QString title = QCoreApplication::translate("ShareSiteList", "%1 (%2)").arg(kind.Title(), site);
    m_listId = FreqStore::Instance().RegisterList(
        {.name = title,
         .icon = icon,
         .pixStateFactory = [path = m_node->GetPathName()] { return makeLine(path); },
         .controller = m_controller.get(),
         .viewFactory = [this, title](QWidget* parent, unsigned id) -> FrequencyStoreListView* {
             return new ShareSiteView(parent, id, {&m_kind, m_node, m_client.get(), title});
         }});
}

ShareSiteList::~ShareSiteList() {
    FreqStore::Instance().RemoveFrequencyListDefinition(m_listId);
    m_client.reset();
    m_controller.reset();
    m_node->GetParentNode()->DeleteNode(m_node);
}
