#include "host/report/recordreader.h"

#include "host/report/byteinput.h"
#include "host/report/irgobject.h"
#include "host/report/xmlscanner.h"

#include <QFile>
#include <QXmlStreamReader>

#include <utility>

namespace REPORTGENERATOR {

namespace {

QString ToText(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

} // namespace

RecordReader::RecordReader(IRGObject& root, IObjectList* items, Fail fail)
    : m_root(root), m_items(items), m_fail(std::move(fail)) {}

void RecordReader::Start(std::string_view name) {
    if (m_skippedDepth > 0) {
        ++m_skippedDepth;
        return;
    }
    if (m_frames.empty()) {
        const RecordInfo& info = m_root.GetRecordInfo();
        if (name != info.name)
            m_fail(QStringLiteral("the root element is \"") + ToText(name.substr(0, 80)) +
                   QStringLiteral("\", not \"") + ToText(info.name) + QLatin1Char('"'));
        m_frames.push_back({&m_root, info.Content(), nullptr});
        m_text.clear();
        return;
    }
    const Frame top = m_frames.back();
    const MemberInfo* member =
        top.text ? nullptr : top.object->GetRecordInfo().Find(name, Placement::Element);
    if (!member) {
        m_skippedDepth = 1;
        return;
    }
    const MemberPtr target = member->at(*top.object);
    Frame frame{top.object, member, nullptr};
    if (auto* const* list = std::get_if<IObjectList*>(&target)) {
        frame.list = m_items && top.object == &m_root ? m_items : *list;
        frame.object = &frame.list->Append();
        frame.text = frame.object->GetRecordInfo().Content();
    } else if (auto* const* object = std::get_if<IRGObject*>(&target)) {
        frame.object = *object;
        frame.text = frame.object->GetRecordInfo().Content();
    }
    m_frames.push_back(frame);
    m_text.clear();
}

void RecordReader::TakeAttribute(std::string_view name, std::string_view value) {
    if (m_skippedDepth > 0)
        return;
    const Frame& frame = m_frames.back();
    const RecordInfo& info = frame.object->GetRecordInfo();
    if (frame.text)
        return;
    if (info.isDocument && m_frames.size() == 1 && name == "Version")
        CheckVersion(value);
    else if (const MemberInfo* member = info.Find(name, Placement::Attribute))
        Assign(frame, *member, value);
}

void RecordReader::Text(std::string_view text) {
    if (m_skippedDepth == 0 && m_frames.back().text)
        m_text += text;
}

void RecordReader::End() {
    if (m_skippedDepth > 0) {
        --m_skippedDepth;
        return;
    }
    const Frame frame = m_frames.back();
    m_frames.pop_back();
    if (frame.text)
        Assign(frame, *frame.text, m_text);
    if (frame.list)
        frame.list->Completed();
}

void RecordReader::CheckVersion(std::string_view text) const {
    const std::optional<double> version = ParseNumber(text);
    if (!version)
        m_fail(QStringLiteral("the version \"") + ToText(text.substr(0, 80)) +
               QStringLiteral("\" is not a number"));
    else if (*version >= IRGObject::GetVersion() + 1)
        m_fail(QStringLiteral("%1 has version %2, and only versions before %3 can be read")
                   .arg(m_root.GetObjectName(), ToText(text.substr(0, 80)),
                        QString::number(IRGObject::GetVersion() + 1)));
}

void RecordReader::Assign(const Frame& frame, const MemberInfo& member, std::string_view text) {
    const char* whatItIsNot = AssignMember(member.at(*frame.object), text, m_cache);
    if (!whatItIsNot)
        return;
    const bool content = member.placement == Placement::Content;
    m_fail(ToText(content ? frame.object->GetRecordInfo().name : member.name) + QStringLiteral(" \"") +
           ToText(text.substr(0, 80)) + QStringLiteral("\" is not ") + QString::fromLatin1(whatItIsNot));
}

namespace {

void TakeStart(RecordReader& reader, const XmlScanner& scanner) {
    reader.Start(scanner.Name());
    for (const XmlScanner::Attribute& attribute : scanner.Attributes())
        reader.TakeAttribute(attribute.name, attribute.value);
}

} // namespace

void ReadDocument(QIODevice& device, const QString& name, IRGObject& root, IObjectList* items,
                  bool heedEncoding) {
    XmlScanner scanner(device, name, heedEncoding);
    RecordReader reader(root, items, [&](const QString& reason) { scanner.Fail(reason); });
    for (;;) {
        switch (scanner.Next()) {
        case XmlScanner::Token::StartElement:
            TakeStart(reader, scanner);
            break;
        case XmlScanner::Token::Text:
            reader.Text(scanner.Text());
            break;
        case XmlScanner::Token::EndElement:
            reader.End();
            break;
        case XmlScanner::Token::End:
            return;
        }
    }
}

namespace {

void TakeStart(RecordReader& reader, const QXmlStreamReader& xml) {
    reader.Start(xml.qualifiedName().toUtf8().toStdString());
    for (const QXmlStreamAttribute& attribute : xml.attributes())
        reader.TakeAttribute(attribute.qualifiedName().toUtf8().toStdString(),
                             attribute.value().toUtf8().toStdString());
}

} // namespace

void ReadDocument(QXmlStreamReader& xml, IRGObject& root) {
    const auto fail = [&](const QString& reason) {
        throw RGException(ErrorText({}, xml.lineNumber(), reason));
    };
    RecordReader reader(root, nullptr, fail);
    int depth = 0;
    if (xml.isStartElement() || xml.readNextStartElement()) {
        do {
            if (xml.isStartElement()) {
                if (++depth > 64)
                    fail(QStringLiteral("elements are nested more than 64 deep"));
                TakeStart(reader, xml);
            } else if (xml.isCharacters()) {
                reader.Text(xml.text().toUtf8().toStdString());
            } else if (xml.isEndElement()) {
                --depth;
                reader.End();
            }
        } while (depth > 0 && xml.readNext() != QXmlStreamReader::Invalid);
    }
    if (xml.hasError())
        fail(xml.errorString());
}

void ReadDocumentFile(const QString& fileName, IRGObject& root, IObjectList* items) {
    ReadWhole(fileName, [&](QFile& file) { ReadDocument(file, fileName, root, items); });
}

bool HasRoot(const QString& fileName, IRGObject& root) {
    try {
        QFile file(fileName);
        OpenForReading(file);
        XmlScanner scanner(file, fileName);
        RecordReader reader(root, nullptr, [&](const QString& reason) { scanner.Fail(reason); });
        if (scanner.Next() != XmlScanner::Token::StartElement)
            return false;
        TakeStart(reader, scanner);
        return true;
    } catch (const RGException&) {
        return false;
    }
}

} // namespace REPORTGENERATOR
