#pragma once

#include "link/listclient.h"
#include "workstation/sharekinds.h"

#include <QPixmap>

class HalvoNodeMediatorCtrl;

/// A list that another seat serves, as a list of this program: with a node, a controller and a tab of its
/// own, in no file.
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
    ListClient& Client() const { return *m_client; }

private:
    const ShareKind& m_kind;
    Node* m_node;
    std::unique_ptr<HalvoNodeMediatorCtrl> m_controller;
    std::unique_ptr<ListReader> m_reader;
    std::unique_ptr<ListClient> m_client;
    int m_listId = 0;
};
