#include "host/report/binaryform.h"

#include "host/report/irgobject.h"
#include "host/report/textform.h"

#include <QtEndian>

#include <cstring>
#include <string_view>

namespace REPORTGENERATOR {

namespace {

constexpr std::string_view BinaryMark = "RGB1";
constexpr std::string_view CompressedMark = "RGZ1";
constexpr quint8 EndOfRecord = 0xFF;

[[noreturn]] void Damaged() {
    throw RGException(QStringLiteral("the binary is damaged"));
}

/// Appends values to a binary.
class Writer {
public:
    explicit Writer(QByteArray& out) : m_out(out) {}

    template <class Number>
    void Put(Number number) {
        const Number little = qToLittleEndian(number);
        m_out.append(reinterpret_cast<const char*>(&little), sizeof little);
    }
    void PutBytes(std::string_view bytes) {
        Put(static_cast<quint32>(bytes.size()));
        m_out.append(bytes.data(), static_cast<qsizetype>(bytes.size()));
    }
    void PutRecord(const IRGObject& object) {
        const auto members = object.GetRecordInfo().members;
        for (std::size_t i = 0; i < members.size(); ++i) {
            const MemberPtr member = members[i].at(const_cast<IRGObject&>(object));
            if (!IsSet(member))
                continue;
            Put(static_cast<quint8>(i));
            std::visit(*this, member);
        }
        Put(EndOfRecord);
    }

    void operator()(const double* value) { Put(*value); }
    void operator()(const int* value) { Put(*value); }
    void operator()(const Timestamp* value) { Put(value->usec); }
    void operator()(const NamedNumber* value) { Put(value->value); }
    void operator()(const QString* value) { PutBytes(value->toUtf8().toStdString()); }
    void operator()(const IRGObject* value) { PutRecord(*value); }
    void operator()(const IObjectList* value) {
        Put(static_cast<quint32>(value->Size()));
        for (qsizetype i = 0; i < value->Size(); ++i)
            PutRecord(value->At(i));
    }

private:
    QByteArray& m_out;
};

/// Takes values from a binary; throws when it ends too early.
class Reader {
public:
    explicit Reader(std::string_view bytes) : m_rest(bytes) {}

    std::string_view Take(std::size_t count) {
        if (count > m_rest.size())
            Damaged();
        const std::string_view taken = m_rest.substr(0, count);
        m_rest.remove_prefix(count);
        return taken;
    }
    template <class Number>
    Number Get() {
        Number number;
        std::memcpy(&number, Take(sizeof number).data(), sizeof number);
        return qFromLittleEndian(number);
    }
    std::string_view GetBytes() { return Take(Get<quint32>()); }
    void GetRecord(IRGObject& object) {
        const auto members = object.GetRecordInfo().members;
        for (quint8 index = Get<quint8>(); index != EndOfRecord; index = Get<quint8>()) {
            if (index >= members.size())
                Damaged();
            std::visit(*this, members[index].at(object));
        }
    }
    bool AtEnd() const { return m_rest.empty(); }

    void operator()(double* value) { *value = Get<double>(); }
    void operator()(int* value) { *value = Get<int>(); }
    void operator()(Timestamp* value) { *value = Timestamp(Get<qint64>()); }
    void operator()(NamedNumber* value) {
        const auto number = Get<quint32>();
        value->value = number < value->names.size() ? static_cast<int>(number) : 0;
    }
    void operator()(QString* value) { *value = m_cache.Get(GetBytes()); }
    void operator()(IRGObject* value) { GetRecord(*value); }
    void operator()(IObjectList* value) {
        // Each item takes at least its end mark, so a made-up count fails before memory does.
        for (auto count = Get<quint32>(); count > 0; --count) {
            GetRecord(value->Append());
            value->Completed();
        }
    }

private:
    std::string_view m_rest;
    TextCache m_cache;
};

std::string_view ViewOf(const QByteArray& bytes) {
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

} // namespace

QByteArray ToBinary(const IRGObject& object) {
    QByteArray out(BinaryMark.data(), BinaryMark.size());
    Writer writer(out);
    writer.PutBytes(object.GetRecordInfo().name);
    writer.Put(object.GetObjectType());
    writer.PutRecord(object);
    return out;
}

void FromBinary(const QByteArray& bytes, IRGObject& object) {
    if (!ViewOf(bytes).starts_with(BinaryMark))
        throw RGException(QStringLiteral("this is no binary of a record"));
    Reader reader(ViewOf(bytes).substr(BinaryMark.size()));
    const std::string_view name = reader.GetBytes();
    if (name != object.GetRecordInfo().name)
        throw RGException(QStringLiteral("the binary is no ") + object.GetObjectName());
    object.SetObjectType(reader.Get<quint32>());
    reader.GetRecord(object);
    if (!reader.AtEnd())
        Damaged();
}

QByteArray Compress(const QByteArray& binary) {
    return QByteArray(CompressedMark.data(), CompressedMark.size()) + qCompress(binary);
}

bool IsCompressed(const QByteArray& bytes) {
    return ViewOf(bytes).starts_with(CompressedMark);
}

QByteArray Decompress(const QByteArray& bytes) {
    // The size stands before the data and is allocated as it is; deflate packs at most 1032 to 1.
    constexpr quint64 LargestRatio = 1032;
    const QByteArray packed = bytes.mid(CompressedMark.size());
    if (!IsCompressed(bytes) || packed.size() < 4)
        throw RGException(QStringLiteral("this is no compressed binary of a record"));
    const auto claimed = qFromBigEndian<quint32>(packed.constData());
    if (claimed > LargestRatio * static_cast<quint64>(packed.size()))
        Damaged();
    const QByteArray binary = qUncompress(packed);
    if (binary.isEmpty())
        Damaged();
    return binary;
}

} // namespace REPORTGENERATOR
