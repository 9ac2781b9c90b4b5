#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QTimer>

#include <functional>

/// Works on the next modal dialog of this class as soon as it is open.
template <typename Dialog>
void WhenOpen(std::function<void(Dialog&)> act) {
    QTimer::singleShot(0, qApp, [act = std::move(act)] {
        if (auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget()))
            return act(*dialog);
        WhenOpen<Dialog>(act);
    });
}

/// Chooses a file; an empty path cancels.
inline void Choose(QFileDialog& dialog, const QString& path) {
    if (path.isEmpty())
        return dialog.reject();
    dialog.setDirectory(QFileInfo(path).absolutePath());
    dialog.selectFile(path);
    static_cast<QDialog&>(dialog).done(QDialog::Accepted);
}

/// Answers the next file dialog; an empty path cancels it.
inline void AnswerDialog(const QString& path) {
    WhenOpen<QFileDialog>([path](QFileDialog& dialog) { Choose(dialog, path); });
}

/// Answers the next message box, then does `then`; `seen` gets the box's title and text, joined by "|".
inline void AnswerQuestion(QMessageBox::StandardButton answer, QString& seen,
                           const std::function<void()>& then = {}) {
    WhenOpen<QMessageBox>([answer, &seen, then](QMessageBox& box) {
        seen = box.windowTitle() + QLatin1Char('|') + box.text();
        box.button(answer)->click();
        if (then)
            then();
    });
}

/// Does something that asks, and answers it; the result is what was asked.
inline QString Answered(QMessageBox::StandardButton answer, const std::function<void()>& act) {
    QString asked;
    AnswerQuestion(answer, asked);
    act();
    return asked;
}
