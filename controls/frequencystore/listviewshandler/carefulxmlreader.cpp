#include "controls/frequencystore/listviewshandler/carefulxmlreader.h"

CarefulXmlReader::CarefulXmlReader(const QString& text) : m_reader(text) {
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
        m_refusal = QStringLiteral("elements are nested too deeply");
    else if (m_reader.isDTD() && m_reader.text().contains(QLatin1String("<!ENTITY")))
        m_refusal = QStringLiteral("entity declarations are refused");
    return m_refusal.isEmpty() && !m_reader.atEnd();
}

bool CarefulXmlReader::Finish() {
    while (Next()) {
    }
    return m_refusal.isEmpty();
}
