#pragma once

#include "link/listclient.h"
#include "link/recordclient.h"
#include "workstation/sharekinds.h"

#include <QPixmap>

class HalvoNodeMediatorCtrl;
struct ListRegistration;

/// A list that another seat serves, as a list of this program: with a node and a tab of its own, in no file.
class ShareSiteList {
public:
    /// Below it stand the nodes of all such lists.
    static constexpr QLatin1String Root{"/Shared"};

    /// The seat outlives the list.
    ShareSiteList(Seat& seat, const QString& site, const ShareKind& kind, const QPixmap& icon);
    ~ShareSiteList();
    ShareSiteList(const ShareSiteList&) = delete;
    ShareSiteList& operator=(const ShareSiteList&) = delete;

    const ShareKind& Kind() const { return m_kind; }
    int ListId() const { return m_listId; }
    ListReader& Reader() const { return *m_reader; }
    /// Null for a list of records, which nobody changes here.
    ListClient* Client() const { return m_client.get(); }
    /// How the list stands, for people.
    QString StateText() const;

private:
    ListRegistration entries(const QString& title);
    ListRegistration records(const QString& title);

    const ShareKind& m_kind;
    Node* m_node;
    std::unique_ptr<HalvoNodeMediatorCtrl> m_controller;
    std::unique_ptr<ListReader> m_reader;
    std::unique_ptr<ListClient> m_client;
    std::unique_ptr<RecordClient> m_records;
    int m_listId = 0;
};
