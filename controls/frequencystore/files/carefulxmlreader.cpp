#include "controls/frequencystore/files/carefulxmlreader.h"

#include <QCoreApplication>

QRegularExpressionMatch ForeignEncodingOf(const QString& text) {
    constexpr qsizetype LongestDeclaration = 200;
    static const QRegularExpression foreign(
        QStringLiteral("^<\\?xml\\s[^>]*?(encoding\\s*=\\s*([\"'])(?!(?i:utf-8)\\2)([A-Za-z0-9._-]*)\\2)"));
    return foreign.match(text.left(LongestDeclaration));
}

namespace {

/// The head of a document without another encoding than UTF-8, and as long as it was; empty when it declares
/// none.
QString headInUtf8(const QString& text) {
    const QRegularExpressionMatch encoding = ForeignEncodingOf(text);
    if (!encoding.hasMatch())
        return QString();
    return text.left(encoding.capturedStart(1)).leftJustified(encoding.capturedEnd(1), QLatin1Char(' '));
}

} // namespace

TextDevice::TextDevice(const QString& text) : m_text(text), m_head(headInUtf8(text)) {
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

qint64 TextDevice::readData(char* data, qint64 maxSize) {
    constexpr qint64 MostBytesOfCharacter = 3;
    const bool inHead = m_position < m_head.size();
    const QStringView rest = QStringView(inHead ? m_head : m_text).mid(m_position);
    QStringView piece = rest.left(maxSize / MostBytesOfCharacter);
    if (piece.size() < rest.size() && piece.size() > 1 && piece.back().isHighSurrogate())
        piece.chop(1); // both halves go together
    const QByteArray bytes = piece.toUtf8();
    std::copy(bytes.begin(), bytes.end(), data);
    m_position += piece.size();
    return bytes.size();
}

void RequireMemory(qsizetype bytes) {
    const QByteArray asked(bytes, Qt::Uninitialized);
}

/// Comes before the members that need it.
static const QString& withRoomForReader(const QString& text) {
    constexpr qsizetype ReaderBytes = 256 * 1024;
    RequireMemory(ReaderBytes);
    return text;
}

CarefulXmlReader::CarefulXmlReader(const QString& text)
    : m_text(withRoomForReader(text)), m_device(text), m_reader(&m_device) {
    m_reader.setNamespaceProcessing(false);
}

bool CarefulXmlReader::Next() {
    if (!m_refusal.isEmpty() || m_reader.atEnd())
        return false;
    m_reader.readNext();
    if (std::exchange(m_leaving, m_reader.isEndElement()))
        --m_depth;
    if (m_reader.isStartElement())
        ++m_depth;
    if (m_reader.hasError())
        m_refusal = m_reader.errorString();
    else if (m_depth > MaxDepth)
        m_refusal = QCoreApplication::translate("Readers", "elements are nested too deeply");
    else if (m_reader.isDTD() && m_reader.text().contains(QLatin1String("<!ENTITY")))
        m_refusal = QCoreApplication::translate("Readers", "entity declarations are refused");
    return m_refusal.isEmpty() && !m_reader.atEnd();
}

bool CarefulXmlReader::Finish() {
    while (Next()) {
    }
    return m_refusal.isEmpty();
}
