#pragma once

#include "link/messagebus.h"

#include <QStringList>

#include <map>

/// Looks for a moment who is at a site and what is served there.
class ShareProbe : public QObject {
    Q_OBJECT

public:
    ShareProbe(std::unique_ptr<MessageBus> bus, const QString& site);
    ~ShareProbe() override;

    /// What the broker has answered so far, in words.
    QString Answer() const;

signals:
    void Changed();

private:
    std::unique_ptr<MessageBus> m_bus;
    std::map<QByteArray, QString> m_seats;
    std::map<QString, QString> m_lists; ///< with the user that serves each
    std::vector<std::unique_ptr<MessageBus::Subscription>> m_subscriptions;
};
