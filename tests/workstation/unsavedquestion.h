#pragma once

#include "tests/support/dialogs.h"
#include "workstation/unsaveddialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>

/// What the question about unsaved lists says; "list|entries|file" for each, and what is kept.
struct Asked {
    QStringList rows;
    QString kept;
    QString save; ///< text of its button
};

/// Closes a window; leaves those lists checked, and answers by a button.
inline Asked CloseAndAnswer(QWidget& window, QDialogButtonBox::StandardButton answer,
                            const QStringList& unchecked = {}, const std::function<void()>& then = {}) {
    Asked asked;
    WhenOpen<UnsavedDialog>([&](UnsavedDialog& dialog) {
        auto* rows = dialog.findChild<QTreeWidget*>();
        for (int i = 0; i < rows->topLevelItemCount(); ++i) {
            QTreeWidgetItem& row = *rows->topLevelItem(i);
            asked.rows << row.text(0) + '|' + row.text(2) + '|' + row.text(1);
            row.setCheckState(0, unchecked.contains(row.text(0)) ? Qt::Unchecked : Qt::Checked);
        }
        if (auto* kept = dialog.findChild<QLabel*>("Kept"))
            asked.kept = kept->text();
        auto* buttons = dialog.findChild<QDialogButtonBox*>();
        asked.save = buttons->button(QDialogButtonBox::Save)->text();
        buttons->button(answer)->click();
        if (then)
            then();
    });
    window.close();
    return asked;
}
