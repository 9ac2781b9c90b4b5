#include "link/messages.h"

namespace Messages {
namespace {

constexpr quint64 MostNumber = 0xffffffffu;

/// Writes what `fieldsOf` lists.
class Out : public Wire::Writer {
public:
    explicit Out(quint8 form) {
        for (const quint8 byte : {MajorVersion, MinorVersion, form})
            Byte(byte);
    }
    void Flag(bool flag) { Byte(flag ? 1 : 0); }
    template <typename E>
    void Choice(E choice, E) {
        Byte(static_cast<quint8>(choice));
    }
    void Short(quint32 number) { Count(number); }
    template <typename T, typename Each>
    void Sequence(const std::vector<T>& items, Each each) {
        Count(items.size());
        for (const T& item : items)
            each(*this, item);
    }
};

/// Reads the same.
class In {
public:
    In(QByteArrayView bytes, quint8 form) : m_in(bytes) {
        const quint8 major = m_in.Byte();
        m_isNewer = m_in.Byte() > MinorVersion;
        if (major != MajorVersion || m_in.Byte() != form)
            m_in.Fail();
    }
    void Flag(bool& flag) { flag = m_in.Byte() != 0; }
    template <typename E>
    void Choice(E& choice, E last) {
        const quint8 byte = m_in.Byte();
        if (byte > static_cast<quint8>(last))
            m_in.Fail();
        choice = static_cast<E>(byte);
    }
    void Short(quint32& number) { number = static_cast<quint32>(m_in.CountUpTo(MostNumber)); }
    void Count(quint64& number) { number = m_in.Count(); }
    void Fixed(quint64& bits) { bits = m_in.Fixed(); }
    void Text(QString& text) { text = m_in.Text(); }
    void Block(QByteArray& bytes) { bytes = m_in.Block().toByteArray(); }
    void Block(QByteArrayView& bytes) { bytes = m_in.Block(); }
    /// Memory is taken as items come: a count alone, which may be anybody's, takes none.
    template <typename T, typename Each>
    void Sequence(std::vector<T>& items, Each each) {
        for (quint64 left = m_in.CountUpTo(static_cast<quint64>(m_in.Left())); left > 0 && m_in.IsGood();
             --left)
            each(*this, items.emplace_back());
    }
    /// Newer minor versions may say more behind what is known.
    bool IsDone() const { return m_in.IsGood() && (m_isNewer || m_in.AtEnd()); }

private:
    Wire::Reader m_in;
    bool m_isNewer = false;
};

/// The number of a kind of message, and what stands in one, in order. `Message` is constant when it is
/// written.
template <typename Message>
struct Form;

template <>
struct Form<Manifest> {
    static constexpr quint8 Number = 1;
    static void Fields(auto& io, auto& m) {
        io.Fixed(m.generation);
        io.Count(m.revision);
        io.Count(m.logFrom);
        io.Count(m.count);
        io.Fixed(m.checksum);
        io.Short(m.chunks);
        io.Short(m.layouts);
        io.Fixed(m.layoutChecksum);
        io.Text(m.server);
    }
};

template <>
struct Form<Chunk> {
    static constexpr quint8 Number = 2;
    static void Fields(auto& io, auto& m) {
        io.Fixed(m.generation);
        io.Count(m.revision);
        io.Sequence(m.rows, [](auto& to, auto& row) { to.Block(row); });
    }
};

template <>
struct Form<Delta> {
    static constexpr quint8 Number = 3;
    static void Fields(auto& io, auto& m) {
        io.Fixed(m.generation);
        io.Count(m.revision);
        io.Count(m.count);
        io.Fixed(m.checksum);
        io.Sequence(m.steps, [](auto& to, auto& step) {
            to.Short(step.chunk);
            to.Short(step.removed);
            if (step.removed == 0)
                to.Block(step.row);
        });
    }
};

template <>
struct Form<Request> {
    static constexpr quint8 Number = 4;
    static void Fields(auto& io, auto& m) {
        io.Choice(m.kind, Request::Kind::Load);
        io.Count(m.number);
        io.Short(m.id);
        io.Count(m.base);
        io.Short(m.layoutNumber);
        io.Block(m.layout);
        io.Block(m.contents);
        io.Text(m.text);
    }
};

template <>
struct Form<Answer> {
    static constexpr quint8 Number = 5;
    static void Fields(auto& io, auto& m) {
        io.Count(m.number);
        io.Choice(m.verdict, Answer::Verdict::Refused);
        io.Text(m.reason);
        io.Short(m.id);
    }
};

template <>
struct Form<Presence> {
    static constexpr quint8 Number = 6;
    static void Fields(auto& io, auto& m) {
        io.Text(m.name);
        io.Text(m.list);
        io.Short(m.id);
        io.Fixed(m.nonce);
    }
};

template <>
struct Form<Claim> {
    static constexpr quint8 Number = 7;
    static void Fields(auto& io, auto& m) {
        io.Text(m.seat);
        io.Fixed(m.nonce);
    }
};

template <>
struct Form<FileState> {
    static constexpr quint8 Number = 8;
    static void Fields(auto& io, auto& m) {
        io.Flag(m.isLoaded);
        io.Text(m.name);
        io.Count(m.announced);
        io.Count(m.revision);
    }
};

template <typename Message>
QByteArray encode(const Message& message) {
    Out out(Form<Message>::Number);
    Form<Message>::Fields(out, message);
    return out.Take();
}

template <typename Message>
std::optional<Message> decode(QByteArrayView bytes) {
    In in(bytes, Form<Message>::Number);
    Message message;
    Form<Message>::Fields(in, message);
    return in.IsDone() ? std::optional<Message>(std::move(message)) : std::nullopt;
}

} // namespace

bool IsOtherVersion(QByteArrayView bytes) {
    return bytes.size() >= 3 && static_cast<quint8>(bytes[0]) != MajorVersion && bytes[0] != 0;
}

void Row::Put(Wire::Writer& writer) const {
    writer.Count(id);
    writer.Count(place);
    writer.Count(revision);
    writer.Count(layout);
    writer.Rest(contents);
}

std::optional<Row> Row::Read(QByteArrayView bytes) {
    Wire::Reader in(bytes);
    Row row;
    row.id = static_cast<EntryId>(in.CountUpTo(MostNumber));
    row.place = static_cast<quint32>(in.CountUpTo(MostNumber));
    row.revision = in.Count();
    row.layout = static_cast<quint32>(in.CountUpTo(MostNumber));
    row.contents = in.Rest();
    return in.IsGood() && row.id != 0 ? std::optional(row) : std::nullopt;
}

QByteArray Manifest::Encode() const {
    return encode(*this);
}

std::optional<Manifest> Manifest::Decode(QByteArrayView bytes) {
    return decode<Manifest>(bytes);
}

QByteArray Chunk::Encode() const {
    return encode(*this);
}

std::optional<Chunk> Chunk::Decode(QByteArrayView bytes) {
    return decode<Chunk>(bytes);
}

QByteArray Delta::Encode() const {
    return encode(*this);
}

std::optional<Delta> Delta::Decode(QByteArrayView bytes) {
    return decode<Delta>(bytes);
}

QByteArray Request::Encode() const {
    return encode(*this);
}

std::optional<Request> Request::Decode(QByteArrayView bytes) {
    return decode<Request>(bytes);
}

QByteArray Answer::Encode() const {
    return encode(*this);
}

std::optional<Answer> Answer::Decode(QByteArrayView bytes) {
    return decode<Answer>(bytes);
}

QByteArray Presence::Encode() const {
    return encode(*this);
}

std::optional<Presence> Presence::Decode(QByteArrayView bytes) {
    return decode<Presence>(bytes);
}

QByteArray Claim::Encode() const {
    return encode(*this);
}

std::optional<Claim> Claim::Decode(QByteArrayView bytes) {
    return decode<Claim>(bytes);
}

QByteArray FileState::Encode() const {
    return encode(*this);
}

std::optional<FileState> FileState::Decode(QByteArrayView bytes) {
    return decode<FileState>(bytes);
}

QByteArray Chunk::EncodeRows(quint64 generation, Revision revision, size_t count, QByteArrayView rows) {
    Out out(Form<Chunk>::Number);
    out.Reserve(rows.size() + 64);
    out.Fixed(generation);
    out.Count(revision);
    out.Count(count);
    out.Rest(rows);
    return out.Take();
}

} // namespace Messages
