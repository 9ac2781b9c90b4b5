#pragma once

#include "host/widgets/tabdialog.h"

/// A tab dialog that can refuse to close with OK: a slot of `applyButtonPressed` that refuses the entries
/// calls `SetCanClose(false)`. Cancel always closes the dialog.
class CanCloseTabDialog : public TabDialog {
    Q_OBJECT

public:
    /// `name` becomes the object name and may be null.
    CanCloseTabDialog(QWidget* parent, const char* name, bool modal, Qt::WindowFlags flags);

    /// Whether OK may close the dialog; it may until told otherwise.
    void SetCanClose(bool canClose) { m_canClose = canClose; }
    /// Whether the dialog was left by Cancel, Escape or its window's close button.
    bool IsCancelled() const { return m_cancelled; }

public slots:
    void done(int result) override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    bool m_canClose = true;
    bool m_cancelled = false;
};
