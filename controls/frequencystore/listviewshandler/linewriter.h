#pragma once

#include <QSaveFile>
#include <QStringEncoder>

/// Writes lines of text as UTF-16, little-endian, with a byte-order mark. The old file stands until `Commit`;
/// a writer that ends before leaves it untouched.
class LineWriter {
public:
    explicit LineWriter(const QString& path);

    /// Appends one line and its end.
    void Append(const QString& line);
    /// Puts the new file in the place of the old one; false, with the old one left, when anything failed.
    bool Commit();
    /// Why writing failed.
    QString Reason() const { return m_file.errorString(); }

private:
    void flush();

    QSaveFile m_file;
    QStringEncoder m_encoder;
    QString m_buffer;
    bool m_good;
};
