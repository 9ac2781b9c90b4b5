#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QTimer>

#include <functional>

/// Answers the next file dialog; an empty path cancels it.
inline void AnswerDialog(const QString& path) {
    QTimer::singleShot(0, qApp, [path] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        if (!dialog)
            return AnswerDialog(path);
        if (path.isEmpty())
            return dialog->reject();
        dialog->setDirectory(QFileInfo(path).absolutePath());
        dialog->selectFile(path);
        static_cast<QDialog*>(dialog)->done(QDialog::Accepted);
    });
}

/// Answers the next message box, then does `then`; `seen` gets the box's title and text, joined by "|".
inline void AnswerQuestion(QMessageBox::StandardButton answer, QString& seen,
                           const std::function<void()>& then = {}) {
    QTimer::singleShot(0, qApp, [answer, &seen, then] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box)
            return AnswerQuestion(answer, seen, then);
        seen = box->windowTitle() + QLatin1Char('|') + box->text();
        box->button(answer)->click();
        if (then)
            then();
    });
}
