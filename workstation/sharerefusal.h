#pragma once

#include "link/listclient.h"

#include <QDialog>

#include <vector>

class QLabel;
class QPushButton;
class QTreeWidget;
class Sharing;

/// What the seat that serves a list did not take, beside what the list has: the operator asks for his state
/// once more, or keeps theirs, which is shown in the list already. It stays open while he works on; what is
/// refused meanwhile joins it.
class ShareRefusal : public QDialog {
    Q_OBJECT

public:
    /// Not owned; outlives the dialog.
    ShareRefusal(Sharing& sharing, QWidget* parent);

    void Add(int listId, const ListClient::Refusal& refusal);
    /// Looks again whether his state can be asked for.
    void Refresh();

private:
    struct Refused {
        int listId;
        ListClient::Refusal refusal;
    };

    void tryAgain();

    Sharing& m_sharing;
    std::vector<Refused> m_refused;
    QLabel* m_reason;
    QTreeWidget* m_fields;
    QPushButton* m_again;
};
