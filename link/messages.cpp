#include "link/messages.h"

namespace Messages {
namespace {

enum class Form : quint8 { Manifest = 1, Chunk, Delta, Request, Answer, Presence, Claim, FileState };

class Out : public Wire::Writer {
public:
    explicit Out(Form form) {
        Byte(MajorVersion);
        Byte(MinorVersion);
        Byte(static_cast<quint8>(form));
    }
};

class In : public Wire::Reader {
public:
    In(QByteArrayView bytes, Form form) : Reader(bytes) {
        const quint8 major = Byte();
        m_isNewer = Byte() > MinorVersion;
        if (major != MajorVersion || Byte() != static_cast<quint8>(form))
            Fail();
    }
    quint32 Short() { return static_cast<quint32>(CountUpTo(0xffffffffu)); }
    template <typename E>
    E Choice(E last) {
        const quint8 byte = Byte();
        if (byte > static_cast<quint8>(last))
            Fail();
        return static_cast<E>(byte);
    }
    /// Newer minor versions may say more behind what is known.
    template <typename T>
    std::optional<T> Done(T message) {
        return IsGood() && (m_isNewer || AtEnd()) ? std::optional<T>(std::move(message)) : std::nullopt;
    }

private:
    bool m_isNewer = false;
};

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
    row.id = static_cast<EntryId>(in.CountUpTo(0xffffffffu));
    row.place = static_cast<quint32>(in.CountUpTo(0xffffffffu));
    row.revision = in.Count();
    row.layout = static_cast<quint32>(in.CountUpTo(0xffffffffu));
    row.contents = in.Rest();
    return in.IsGood() && row.id != 0 ? std::optional(row) : std::nullopt;
}

QByteArray Manifest::Encode() const {
    Out out(Form::Manifest);
    out.Fixed(generation);
    for (const quint64 number : {revision, logFrom, count})
        out.Count(number);
    out.Fixed(checksum);
    out.Count(chunks);
    out.Count(layouts);
    out.Fixed(layoutChecksum);
    out.Text(server);
    return out.Take();
}

std::optional<Manifest> Manifest::Decode(QByteArrayView bytes) {
    In in(bytes, Form::Manifest);
    Manifest m;
    m.generation = in.Fixed();
    m.revision = in.Count();
    m.logFrom = in.Count();
    m.count = in.Count();
    m.checksum = in.Fixed();
    m.chunks = in.Short();
    m.layouts = in.Short();
    m.layoutChecksum = in.Fixed();
    m.server = in.Text();
    return in.Done(std::move(m));
}

QByteArray Chunk::Encode() const {
    Out out(Form::Chunk);
    out.Fixed(generation);
    out.Count(revision);
    out.Count(rows.size());
    for (const QByteArrayView row : rows)
        out.Block(row);
    return out.Take();
}

std::optional<Chunk> Chunk::Decode(QByteArrayView bytes) {
    In in(bytes, Form::Chunk);
    Chunk chunk;
    chunk.generation = in.Fixed();
    chunk.revision = in.Count();
    chunk.rows.resize(in.CountUpTo(static_cast<quint64>(in.Left())));
    for (QByteArrayView& row : chunk.rows)
        row = in.Block();
    return in.Done(std::move(chunk));
}

QByteArray Delta::Encode() const {
    Out out(Form::Delta);
    out.Fixed(generation);
    out.Count(revision);
    out.Count(count);
    out.Fixed(checksum);
    out.Count(steps.size());
    for (const Step& step : steps) {
        out.Count(step.chunk);
        out.Count(step.removed);
        if (step.removed == 0)
            out.Block(step.row);
    }
    return out.Take();
}

std::optional<Delta> Delta::Decode(QByteArrayView bytes) {
    In in(bytes, Form::Delta);
    Delta delta;
    delta.generation = in.Fixed();
    delta.revision = in.Count();
    delta.count = in.Count();
    delta.checksum = in.Fixed();
    delta.steps.resize(in.CountUpTo(static_cast<quint64>(in.Left())));
    for (Step& step : delta.steps) {
        step.chunk = in.Short();
        step.removed = in.Short();
        if (step.removed == 0)
            step.row = in.Block();
    }
    return in.Done(std::move(delta));
}

QByteArray Request::Encode() const {
    Out out(Form::Request);
    out.Byte(static_cast<quint8>(kind));
    out.Count(number);
    out.Count(id);
    out.Count(base);
    out.Count(layoutNumber);
    out.Block(layout);
    out.Block(contents);
    out.Text(text);
    return out.Take();
}

std::optional<Request> Request::Decode(QByteArrayView bytes) {
    In in(bytes, Form::Request);
    Request request;
    request.kind = in.Choice(Kind::Load);
    request.number = in.Count();
    request.id = in.Short();
    request.base = in.Count();
    request.layoutNumber = in.Short();
    request.layout = in.Block().toByteArray();
    request.contents = in.Block().toByteArray();
    request.text = in.Text();
    return in.Done(std::move(request));
}

QByteArray Answer::Encode() const {
    Out out(Form::Answer);
    out.Count(number);
    out.Byte(static_cast<quint8>(verdict));
    out.Text(reason);
    out.Count(id);
    return out.Take();
}

std::optional<Answer> Answer::Decode(QByteArrayView bytes) {
    In in(bytes, Form::Answer);
    Answer answer;
    answer.number = in.Count();
    answer.verdict = in.Choice(Verdict::Refused);
    answer.reason = in.Text();
    answer.id = in.Short();
    return in.Done(std::move(answer));
}

QByteArray Presence::Encode() const {
    Out out(Form::Presence);
    out.Text(name);
    out.Text(list);
    out.Count(id);
    out.Fixed(nonce);
    return out.Take();
}

std::optional<Presence> Presence::Decode(QByteArrayView bytes) {
    In in(bytes, Form::Presence);
    Presence presence;
    presence.name = in.Text();
    presence.list = in.Text();
    presence.id = in.Short();
    presence.nonce = in.Fixed();
    return in.Done(std::move(presence));
}

QByteArray Claim::Encode() const {
    Out out(Form::Claim);
    out.Text(seat);
    out.Fixed(nonce);
    return out.Take();
}

std::optional<Claim> Claim::Decode(QByteArrayView bytes) {
    In in(bytes, Form::Claim);
    Claim claim;
    claim.seat = in.Text();
    claim.nonce = in.Fixed();
    return in.Done(std::move(claim));
}

QByteArray FileState::Encode() const {
    Out out(Form::FileState);
    out.Byte(isLoaded ? 1 : 0);
    out.Text(name);
    out.Count(announced);
    out.Count(revision);
    return out.Take();
}

std::optional<FileState> FileState::Decode(QByteArrayView bytes) {
    In in(bytes, Form::FileState);
    FileState state;
    state.isLoaded = in.Byte() != 0;
    state.name = in.Text();
    state.announced = in.Count();
    state.revision = in.Count();
    return in.Done(std::move(state));
}

} // namespace Messages
