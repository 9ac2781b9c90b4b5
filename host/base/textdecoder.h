#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QString>
#include <QStringDecoder>

#include <optional>
#include <string_view>
#include <vector>

/// How a file of text spells its characters.
enum class TextEncoding : quint8 { Utf8, Utf16LE, Utf16BE, Utf32LE, Utf32BE, Windows1252 };

/// The kind of text in a file. A byte-order mark tells the encoding; without one it is UTF-16 if zero bytes
/// show it, UTF-8 if the whole file is UTF-8, and otherwise Windows-1252.
struct TextForm {
    TextEncoding encoding = TextEncoding::Utf8;
    qint64 markSize = 0;    ///< bytes of the byte-order mark, of which there may be several
    qint64 foreignLine = 0; ///< the first line that is not UTF-8, in a file of Windows-1252; else 0
    QString head;           ///< the beginning of the text
    qint64 refusalLine = 0; ///< where it shows that this is no text; 0 when it does nowhere
    QString refusal;        ///< why this is no text; empty when it is

    /// The remark for the operator on a file that is not UTF-8 and has no mark; empty for any other file.
    QString Remark() const;
};

/// Looks at a device from beginning to end, or only at its head if that tells enough, and leaves it behind
/// the mark. Only the head of a sequential device is looked at.
TextForm LookAtText(QIODevice& device);

/// Number of the bytes at the beginning that are well-formed UTF-8.
std::size_t Utf8Length(std::string_view bytes);
/// Whether these bytes, at which UTF-8 ends, are the beginning of a character.
bool BeginsCharacter(std::string_view bytes);

/// Whether a character has no place in a line of text: control characters but TAB, LF, CR and FF.
inline bool IsStrayControl(QChar c) {
    const char16_t code = c.unicode();
    return (code < 0x20 && code != u'\t' && code != u'\n' && code != u'\r' && code != u'\f') || code == 0x7F;
}

/// Appends the places of all control characters in `text` from `from` on, of those too that a line may hold.
void AppendControls(QStringView text, qsizetype from, std::vector<quint32>& places);

/// Number of the line ends in a text: LF, CR or both.
qint64 CountLineEnds(QStringView text);

/// Turns bytes into text, block by block. What is not well encoded becomes U+FFFD.
class TextDecoder {
public:
    explicit TextDecoder(TextEncoding encoding);

    /// Appends the text of the next bytes.
    void Append(QString& text, const QByteArray& bytes);
    /// Whether bytes were not well encoded.
    bool HasError() const { return m_decoder && m_decoder->hasError(); }
    /// Whether a character was begun and not finished.
    bool IsWithinCharacter() const { return m_decoder && m_decoder->IsWithinCharacter(); }

private:
    class Decoder : public QStringDecoder {
    public:
        using QStringDecoder::QStringDecoder;
        bool IsWithinCharacter() const { return state.remainingChars != 0; }
    };

    std::optional<Decoder> m_decoder; ///< none for Windows-1252
};

/// The text of a device as UTF-8, for readers of bytes.
class Utf8Device final : public QIODevice {
public:
    /// The source is the caller's, open, and stands behind its mark.
    Utf8Device(QIODevice& source, TextEncoding encoding);
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char* data, qint64 size) override;
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QIODevice& m_source;
    TextDecoder m_decoder;
    QByteArray m_bytes;
    qsizetype m_position = 0;
};
