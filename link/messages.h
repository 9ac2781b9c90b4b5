#pragma once

#include "link/wire.h"

#include <optional>
#include <vector>

// The messages of a shared list. Each begins with the protocol's version and its kind. Decoding answers
// nothing for bytes that are no such message; one of another major version is told apart by `IsOtherVersion`.

namespace Messages {

constexpr quint8 MajorVersion = 1;
constexpr quint8 MinorVersion = 0;

/// Whether the bytes are a message of a major version that this program does not know.
bool IsOtherVersion(QByteArrayView bytes);

using EntryId = quint32;
using Revision = quint64;

/// An entry as it travels. Its place orders the list; its revision is that of its last change.
struct Row {
    EntryId id = 0;
    quint32 place = 0;
    Revision revision = 0;
    quint32 layout = 0;
    QByteArrayView contents; ///< of the layout; the bytes of whoever was read

    void Put(Wire::Writer& writer) const;
    static std::optional<Row> Read(QByteArrayView bytes);
};

/// What a list is at its newest revision (retained). The log holds the changes from `logFrom` on; older ones
/// stand in chunks. A new generation makes all chunks and the log of an older one void.
struct Manifest {
    quint64 generation = 0;
    Revision revision = 0;
    Revision logFrom = 0;
    quint64 count = 0;
    quint64 checksum = 0; ///< of the rows' bytes, in any order
    quint32 chunks = 0;
    quint32 layouts = 0;
    quint64 layoutChecksum = 0;
    QString server; ///< seat that serves the list

    QByteArray Encode() const;
    static std::optional<Manifest> Decode(QByteArrayView bytes);
    bool operator==(const Manifest&) const = default;
};

/// Rows of a list, as of a revision (retained). Each chunk of a list that had rows once stays, maybe empty.
struct Chunk {
    quint64 generation = 0;
    Revision revision = 0;
    std::vector<QByteArrayView> rows; ///< each to be read by `Row::Read`

    QByteArray Encode() const;
    /// The same of rows that stand one behind the other, each behind its length.
    static QByteArray EncodeRows(quint64 generation, Revision revision, size_t count, QByteArrayView rows);
    static std::optional<Chunk> Decode(QByteArrayView bytes);
};

/// One change of a list (retained in one of the log's places, until that is wanted for a newer one).
struct Delta {
    struct Step {
        quint32 chunk = 0;
        EntryId removed = 0; ///< 0 when there is a row
        QByteArrayView row;
    };
    quint64 generation = 0;
    Revision revision = 0;
    quint64 count = 0; ///< afterwards, as is the next
    quint64 checksum = 0;
    std::vector<Step> steps;

    QByteArray Encode() const;
    static std::optional<Delta> Decode(QByteArrayView bytes);
};

/// What a client asks of the server.
struct Request {
    enum class Kind : quint8 {
        Hello = 0,  ///< may I edit?
        Set = 1,    ///< an entry's contents
        Add = 2,    ///< an entry at the end, or one that was removed, back at its place, when `id` is not 0
        Remove = 3, ///< an entry
        Load = 4,   ///< a file, by its bare name in `text`
    };
    Kind kind = Kind::Hello;
    quint64 number = 0; ///< counted by the client; each is taken once
    EntryId id = 0;
    Revision base = 0; ///< of the entry as the client knew it
    quint32 layoutNumber = 0;
    QByteArray layout; ///< of its own, instead of one of the list's
    QByteArray contents;
    QString text;

    QByteArray Encode() const;
    static std::optional<Request> Decode(QByteArrayView bytes);
};

struct Answer {
    enum class Verdict : quint8 {
        Accepted = 0,
        OutOfDate = 1, ///< the entry has changed since; its present state comes with the next change
        Refused = 2,
    };
    quint64 number = 0;
    Verdict verdict = Verdict::Accepted;
    QString reason;
    EntryId id = 0; ///< of an entry that was added

    QByteArray Encode() const;
    static std::optional<Answer> Decode(QByteArrayView bytes);
};

/// Who is there; empty when a seat goes, which the broker tells when its connection breaks.
struct Presence {
    QString name; ///< for people
    QString list; ///< whose entry is being edited; empty for none
    EntryId id = 0;
    quint64 nonce = 0; ///< of the connection

    QByteArray Encode() const;
    static std::optional<Presence> Decode(QByteArrayView bytes);
};

/// Who serves a list (retained).
struct Claim {
    QString seat;
    quint64 nonce = 0;

    QByteArray Encode() const;
    static std::optional<Claim> Decode(QByteArrayView bytes);
};

/// The file that is loaded (retained), and how often a newly loaded one has been announced.
struct FileState {
    bool isLoaded = false;
    QString name;
    quint64 announced = 0;
    Revision revision = 0; ///< of the list that was announced

    QByteArray Encode() const;
    static std::optional<FileState> Decode(QByteArrayView bytes);
};

} // namespace Messages
