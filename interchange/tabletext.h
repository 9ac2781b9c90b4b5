#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QStringDecoder>

#include <string_view>

namespace Interchange {

// The text of a table that no format knows: its encoding, what separates its cells, and which of its lines
// are no rows.

/// Whether a row is none of the table, by its first cell: a comment, or the separator for a spreadsheet.
bool IsPassedOver(std::string_view first);

/// The separator whose count is the same in most rows at the beginning of a text, and the greatest; a row may
/// have line ends within quotes.
char FindSeparator(const QString& head);

/// The text of a device in an encoding that is known by name, as UTF-8.
class NamedEncoding final : public QIODevice {
public:
    /// The source is the caller's and open.
    NamedEncoding(QIODevice& source, const QByteArray& encoding);
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char* data, qint64 size) override;
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QIODevice& m_source;
    QStringDecoder m_decoder;
    QByteArray m_text; ///< that nobody has read yet
};

/// Calls `read` with a device that gives the text in the encoding of that name, if there is one.
template <typename Read>
auto InEncoding(QIODevice& device, const QByteArray& encoding, Read read) {
    if (encoding.isEmpty() || !QStringDecoder(encoding.constData()).isValid())
        return read(device);
    NamedEncoding decoded(device, encoding);
    return read(static_cast<QIODevice&>(decoded));
}

} // namespace Interchange
