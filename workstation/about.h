#pragma once

#include <QDialog>

/// What the program is: its version, its licence, and the libraries it runs with, with theirs.
class AboutDialog : public QDialog {
    Q_OBJECT

public:
    explicit AboutDialog(QWidget* parent = nullptr);
};
