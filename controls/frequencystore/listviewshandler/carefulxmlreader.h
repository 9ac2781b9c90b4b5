#pragma once

#include <QXmlStreamReader>

/// Reads a document token by token and refuses what costs more than its length: entity declarations, which
/// may expand without end, and deep nesting. Names are taken as they stand, with their prefixes.
class CarefulXmlReader {
public:
    static constexpr int MaxDepth = 64;

    explicit CarefulXmlReader(const QString& text);

    /// Goes to the next token; false at the end of the document, or where it is refused.
    bool Next();
    /// Reads what is left; false when it is refused.
    bool Finish();
    /// Why and at which line (from 1) the document is refused; empty while it is not.
    const QString& Refusal() const { return m_refusal; }
    qint64 Line() const { return m_reader.lineNumber(); }

    bool IsStart() const { return m_reader.isStartElement(); }
    bool IsEnd() const { return m_reader.isEndElement(); }
    /// Number of the elements around the present token; a start or end tag counts its own.
    int Depth() const { return m_depth; }
    QStringView Name() const { return m_reader.qualifiedName(); }
    QXmlStreamAttributes Attributes() const { return m_reader.attributes(); }
    /// Position behind the present start or end tag, in characters of the text.
    qsizetype End() const { return m_reader.characterOffset(); }

private:
    QXmlStreamReader m_reader;
    int m_depth = 0;
    bool m_leaving = false; ///< the element of the last token ends behind it
    QString m_refusal;
};
