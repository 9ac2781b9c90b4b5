#pragma once

#include <QIODevice>
#include <QRegularExpressionMatch>
#include <QXmlStreamReader>

/// Where a document's declaration names another encoding than UTF-8: its first part is that attribute, its
/// third the name. No match when there is none.
QRegularExpressionMatch ForeignEncodingOf(const QString& text);

/// Gives a text as UTF-8 bytes, some at a time, so that nobody needs all of them in memory.
class TextDevice final : public QIODevice {
public:
    explicit TextDevice(const QString& text);

    bool isSequential() const override { return true; }
    bool atEnd() const override { return m_position == m_text.size(); }

protected:
    qint64 readData(char* data, qint64 maxSize) override;
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QString m_text;
    QString m_head; ///< stands in place of as many characters of the text
    qsizetype m_position = 0;
};

/// Throws std::bad_alloc when there are not so many bytes left. Qt's XML classes end the program where they
/// run out of memory themselves, so it is asked before they are made.
void RequireMemory(qsizetype bytes);

/// Reads a document, in little more memory than its text takes, token by token and refuses what costs more
/// than its length: entity declarations, which may expand without end, and deep nesting. Names are taken as
/// they stand, with their prefixes.
class CarefulXmlReader {
public:
    static constexpr int MaxDepth = 64;

    /// A text is no longer encoded in any way, whatever its declaration says.
    explicit CarefulXmlReader(const QString& text);

    /// Goes to the next token; false at the end of the document, or where it is refused.
    bool Next();
    /// Reads what is left; false when it is refused.
    bool Finish();
    /// Why and at which line (from 1) the document is refused; empty while it is not.
    const QString& Refusal() const { return m_refusal; }
    qint64 Line() const { return m_reader.lineNumber(); }
    /// Characters of the text that have been read.
    qint64 Position() const { return m_reader.characterOffset(); }

    bool IsStart() const { return m_reader.isStartElement(); }
    bool IsEnd() const { return m_reader.isEndElement(); }
    /// Number of the elements around the present token; a start or end tag counts its own.
    int Depth() const { return m_depth; }
    QStringView Name() const { return m_reader.qualifiedName(); }
    QXmlStreamAttributes Attributes() const { return m_reader.attributes(); }
    /// Position of the present start or end tag, in characters of the text. No "<" can stand within a tag.
    qsizetype Begin() const { return m_text.lastIndexOf(QLatin1Char('<'), End() - 1); }
    /// Position behind it.
    qsizetype End() const { return m_reader.characterOffset(); }

private:
    QString m_text;
    TextDevice m_device;
    QXmlStreamReader m_reader;
    int m_depth = 0;
    bool m_leaving = false; ///< the element of the last token ends behind it
    QString m_refusal;
};
