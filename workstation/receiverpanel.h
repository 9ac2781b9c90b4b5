#pragma once

#include "receiver/receiversettings.h"

#include <QWidget>

class NoiBands;
class QFormLayout;
class Receiver;
class VCLineEdit;

/// The panel of a receiver: its settings as they are, to be changed. A field refuses what is
/// outside the setting's limits and says so below itself. Below them it tells in which band of interest the
/// receiver is. Receiver and bands are not owned and outlive the panel.
class ReceiverPanel : public QWidget {
    Q_OBJECT

public:
    ReceiverPanel(Receiver& receiver, const NoiBands& bands, QWidget* parent = nullptr);

private:
    void addSetting(QFormLayout& form, const ReceiverSetting& setting);
    void addNumber(QFormLayout& form, const ReceiverSetting& setting, const QString& label);

    Receiver& m_receiver;
};
