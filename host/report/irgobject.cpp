#include "host/report/irgobject.h"

#include "host/report/binaryform.h"
#include "host/report/byteinput.h"
#include "host/report/outputfile.h"
#include "host/report/recordreader.h"
#include "host/report/textform.h"
#include "host/report/xmltext.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <utility>

namespace REPORTGENERATOR {

namespace {

IRGObject::Logger& TheLogger() {
    static auto* logger = new IRGObject::Logger; // outlives records in static storage
    return *logger;
}

/// Runs a reader of a text or binary from memory; false and a log entry when it throws.
template <class Read>
bool Succeeds(IRGObject& object, Read&& read) {
    object.Reset();
    try {
        read();
        return true;
    } catch (const RGException& exception) {
        object.Reset();
        if (TheLogger())
            TheLogger()(exception.GetErrorText());
        return false;
    }
}

/// Runs a reader of a file; leaves the object empty when it throws.
template <class Read>
void ReadOrReset(IRGObject& object, Read&& read) {
    object.Reset();
    try {
        read();
    } catch (...) {
        object.Reset();
        throw;
    }
}

void AppendList(IObjectList& target, const IObjectList& source) {
    for (qsizetype i = 0, count = source.Size(); i < count; ++i)
        (void)target.Append().MergeRGObject(source.At(i)); // lists of one member are of one type
}

/// Takes over one set member; both point at the same member of two objects of one type.
struct Merging {
    const MemberPtr& source;

    template <class T>
    void operator()(T* target) const {
        *target = *std::get<T*>(source);
    }
    void operator()(IRGObject* target) const {
        (void)target->MergeRGObject(*std::get<IRGObject*>(source)); // one member is of one type
    }
    void operator()(IObjectList* target) const { AppendList(*target, *std::get<IObjectList*>(source)); }
};

QString MemberText(const MemberPtr& member) {
    static constexpr EscapeTable None{};
    std::string text;
    AppendMember(text, member, None);
    return QString::fromStdString(text);
}

QString ToText(std::string_view name) {
    return QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size()));
}

/// QXmlStreamWriter stops silently at characters that XML cannot hold.
QString XmlText(QString text) {
    for (QChar& c : text)
        if (!IsXmlCharacter(c.unicode()) && !c.isSurrogate())
            c = QChar::ReplacementCharacter;
    return text;
}

/// A sub-record's element is named by its member, not by its type.
void WriteElement(QXmlStreamWriter& writer, const IRGObject& object, std::string_view name) {
    const RecordInfo& info = object.GetRecordInfo();
    writer.writeStartElement(ToText(name));
    if (info.isDocument)
        writer.writeAttribute(QStringLiteral("Version"), QString::number(IRGObject::GetVersion()));
    for (const MemberInfo& member : info.members) {
        const MemberPtr value = member.at(const_cast<IRGObject&>(object));
        if (!IsSet(value))
            continue;
        if (auto* const* part = std::get_if<IRGObject*>(&value)) {
            WriteElement(writer, **part, member.name);
        } else if (auto* const* list = std::get_if<IObjectList*>(&value)) {
            for (qsizetype i = 0; i < (*list)->Size(); ++i)
                WriteElement(writer, (*list)->At(i), member.name);
        } else if (const QString text = XmlText(MemberText(value));
                   member.placement == Placement::Attribute) {
            writer.writeAttribute(ToText(member.name), text);
        } else if (member.placement == Placement::Content) {
            writer.writeCharacters(text);
        } else {
            writer.writeTextElement(ToText(member.name), text);
        }
    }
    writer.writeEndElement();
}

} // namespace

QString IRGObject::GetObjectName() const {
    return ToText(GetRecordInfo().name);
}

void IRGObject::SetLogger(Logger logger) {
    TheLogger() = std::move(logger);
}

void IRGObject::ResetLogger() {
    TheLogger() = nullptr;
}

bool IRGObject::HasData() const {
    for (const MemberInfo& member : GetRecordInfo().members)
        if (IsSet(member.at(const_cast<IRGObject&>(*this))))
            return true;
    return false;
}

bool IRGObject::Check() const {
    for (const MemberInfo& member : GetRecordInfo().members) {
        const MemberPtr value = member.at(const_cast<IRGObject&>(*this));
        if (auto* const* part = std::get_if<IRGObject*>(&value); part && !(*part)->Check())
            return false;
        if (auto* const* list = std::get_if<IObjectList*>(&value))
            for (qsizetype i = 0; i < (*list)->Size(); ++i)
                if (!(*list)->At(i).Check())
                    return false;
    }
    return true;
}

void IRGObject::Reset() {
    for (const MemberInfo& member : GetRecordInfo().members)
        ClearMember(member.at(*this));
}

bool IRGObject::MergeRGObject(const IRGObject& other) {
    const RecordInfo& info = GetRecordInfo();
    if (&info != &other.GetRecordInfo())
        return false;
    for (const MemberInfo& member : info.members) {
        const MemberPtr source = member.at(const_cast<IRGObject&>(other));
        if (IsSet(source))
            std::visit(Merging{source}, member.at(*this));
    }
    return true;
}

void IRGObject::Validate(bool validate) const {
    if (validate && !Check())
        throw RGException(QStringLiteral("the content of ") + GetObjectName() +
                          QStringLiteral(" makes no sense"));
}

QString IRGObject::GetXmlString() const {
    std::string text;
    AppendDocument(text, *this);
    return QString::fromStdString(text);
}

bool IRGObject::SetXmlString(const QString& text, bool validate) {
    return Succeeds(*this, [&] {
        QByteArray bytes = text.toUtf8();
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::ReadOnly);
        ReadDocument(buffer, {}, *this, nullptr, false);
        Validate(validate || m_validate);
    });
}

void IRGObject::LoadXml(const QString& fileName) {
    ReadOrReset(*this, [&] {
        ReadDocumentFile(fileName, *this);
        Validate(m_validate);
    });
}

void IRGObject::LoadXml(QFile* file) {
    ReadOrReset(*this, [&] {
        ReadDocument(*file, file->fileName(), *this);
        Validate(m_validate);
    });
}

void IRGObject::SaveXml(const QString& fileName) const {
    OutputFile file(fileName);
    std::string text;
    AppendDocument(text, *this);
    WriteBytes(file.Device(), fileName, text);
    file.Commit();
}

void IRGObject::GetXml(QXmlStreamWriter& writer) const {
    WriteElement(writer, *this, GetRecordInfo().name);
}

void IRGObject::ProcessXml(QXmlStreamReader& reader) {
    ReadOrReset(*this, [&] {
        ReadDocument(reader, *this);
        Validate(m_validate);
    });
}

QByteArray IRGObject::GetBinary() const {
    return ToBinary(*this);
}

bool IRGObject::SetBinary(const QByteArray& bytes) {
    return Succeeds(*this, [&] {
        FromBinary(bytes, *this);
        Validate(m_validate);
    });
}

QByteArray IRGObject::GetCompressedBinary() const {
    return Compress(ToBinary(*this));
}

bool IRGObject::SetCompressedBinary(const QByteArray& bytes) {
    return Succeeds(*this, [&] {
        FromBinary(Decompress(bytes), *this);
        Validate(m_validate);
    });
}

void IRGObject::LoadBinary(QFile* file) {
    ReadOrReset(*this, [&] {
        try {
            if (!QFileInfo(file->fileName()).isFile())
                throw RGException(QStringLiteral("this is no ordinary file"));
            const QByteArray bytes = file->readAll();
            FromBinary(IsCompressed(bytes) ? Decompress(bytes) : bytes, *this);
            Validate(m_validate);
        } catch (const RGException& exception) {
            throw RGException(ErrorText(file->fileName(), 0, exception.GetErrorText()));
        }
    });
}

void IRGObject::SaveBinary(QFile* file) const {
    WriteBytes(*file, file->fileName(), GetCompressedBinary().toStdString());
}

} // namespace REPORTGENERATOR
