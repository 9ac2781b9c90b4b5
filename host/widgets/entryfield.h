#pragma once

#include <QString>

class QWidget;

/// A field that keeps what the operator enters until `Commit`. Its signal `errorChanged(QString)` tells what
/// is wrong with the entry; an empty text says that it is right again.
class IEntryField {
public:
    virtual ~IEntryField() = default;

    /// Writes the entry, if there is one; false when it is not acceptable, and stays in the field.
    [[nodiscard]] virtual bool Commit() = 0;
    /// What is wrong with the entry; empty when nothing is.
    virtual const QString& ErrorText() const = 0;
    /// Brings a wrong entry to the operator's eyes, ready to be typed over.
    virtual void ShowError() = 0;
};

/// Paints the frame that marks a field with a wrong entry; called from its paint event.
void PaintErrorFrame(QWidget& field);
