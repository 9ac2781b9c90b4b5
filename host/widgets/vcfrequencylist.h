#pragma once

#include "host/valuetree/value.h"
#include "host/widgets/boundwidget.h"
#include "host/widgets/entryfield.h"

#include <QPlainTextEdit>

/// Shows and edits a list of frequencies, one per line. It observes the list and does not own it; it is
/// enabled while it has one. Entries are read as those of a `VCLineEdit`, and several in one line are kept
/// apart by ";"; they are written when the field is left, and Escape brings the list back. When one of them
/// is no frequency or outside the limits, none is written, and the field says which line it is.
class VCFrequencyList : public QPlainTextEdit, public IEntryField, private BoundWidget<ValueList<double>> {
    Q_OBJECT

public:
    VCFrequencyList(QWidget* parent, const char* name);

    /// Shows that list from now on (Hz); null lets go of the one before. An unfinished entry is dropped.
    /// `reference`, which may be null and need not outlive the field, gives the limits, and by its present
    /// content the unit of entries that name none.
    void SetValueList(ValueList<double>* list, ValueNumeric<double>* reference);

    [[nodiscard]] bool Commit() override;
    const QString& ErrorText() const override { return m_error; }
    void ShowError() override;
    QSize sizeHint() const override;

signals:
    void errorChanged(const QString& error);

protected:
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void showValue() override;
    QString problemOf(const QString& entries, std::vector<double>& frequencies);
    void setError(const QString& error);

    WeakRef<ValueNumeric<double>> m_reference;
    QString m_error;
    int m_wrongLine = 0; ///< from 0; counts while there is an error
};
