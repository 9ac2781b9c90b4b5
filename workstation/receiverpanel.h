#pragma once

#include "receiver/receiversettings.h"

#include <QWidget>

#include <vector>

class NoiBands;
class QFormLayout;
class QLabel;
class QVBoxLayout;
class Receiver;
class VCLineEdit;

/// The panel of a receiver: what receives and how it stands, and its settings as they are, to be changed. A
/// field refuses what is outside the setting's limits and says so below itself; a setting that cannot be
/// changed is off, and its tip says why. Below them it tells in which band of interest the receiver is.
/// Receiver and bands are not owned and outlive the panel.
class ReceiverPanel : public QWidget {
    Q_OBJECT

public:
    ReceiverPanel(Receiver& receiver, const NoiBands& bands, QWidget* parent = nullptr);

private:
    struct Row {
        const ReceiverSetting& setting;
        QLabel* label;
        QWidget* holder; ///< of the editor, which enables itself
    };

    void addSetting(const ReceiverSetting& setting);
    QWidget* makeEditor(const ReceiverSetting& setting, QWidget* holder);
    static void addComplaint(VCLineEdit& field, QVBoxLayout& below);
    void showState();

    Receiver& m_receiver;
    QLabel* m_state;
    QFormLayout* m_form;
    std::vector<Row> m_rows;
};
