#pragma once

#include "workstation/receiversettings.h"

#include <QWidget>

class QFormLayout;
class Receiver;
class VCLineEdit;

/// The panel of a receiver: its level, and its settings as they are, to be changed. A field refuses what is
/// outside the setting's limits and says so below itself. The receiver is not owned and outlives the panel.
class ReceiverPanel : public QWidget {
    Q_OBJECT

public:
    explicit ReceiverPanel(Receiver& receiver, QWidget* parent = nullptr);

private:
    void addSetting(QFormLayout& form, const ReceiverSetting& setting);
    void addNumber(QFormLayout& form, const ReceiverSetting& setting, const QString& label);

    Receiver& m_receiver;
};
