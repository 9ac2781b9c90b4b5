#pragma once

#include <QFileDialog>

/// Settings of the operator for the whole GUI.
class GuiBase {
public:
    static GuiBase& Instance();

    /// Options of every file dialog: the system's own dialogs, or Qt's.
    QFileDialog::Options UseNativeDialogs() const { return m_options; }
    void SetUseNativeDialogs(bool native) {
        m_options = native ? QFileDialog::Options() : QFileDialog::Options(QFileDialog::DontUseNativeDialog);
    }

    /// Where file dialogs without a directory of their own start.
    const QString& GetCurrentDirectory() const { return m_currentDirectory; }
    void SetCurrentDirectory(const QString& directory) { m_currentDirectory = directory; }

    /// Hz that a frequency typed without a unit counts, 1e3 or 1e6; 0: the unit that its field shows.
    double GetBareUnit() const { return m_bareUnit; }
    void SetBareUnit(double hertz) { m_bareUnit = hertz; }

private:
    GuiBase() = default;

    QFileDialog::Options m_options;
    QString m_currentDirectory;
    double m_bareUnit = 0;
};
