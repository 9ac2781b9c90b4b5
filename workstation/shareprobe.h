#pragma once

#include "link/sitelists.h"

/// Looks for a moment, as a seat of the site, who is there and what lists it has.
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
    QString listsText() const;

    std::unique_ptr<MessageBus> m_bus;
    Seat m_seat;
    SiteLists m_lists;
};
