#pragma once

#include <QMenu>

/// The header menu of a sortable view; its actions stand above the entries that show and hide columns.
class ResortPopupMenu : public QMenu {
    Q_OBJECT

public:
    ResortPopupMenu(QWidget* parent, const char* name) : QMenu(parent) {
        setObjectName(QString::fromLatin1(name));
    }
};
