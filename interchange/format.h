#pragma once

#include "host/freqstorexml/detectionresult.h"
#include "host/freqstorexml/frequencystoreentry.h"
#include "host/freqstorexml/listcontent.h"
#include "interchange/account.h"

#include <QDateTime>
#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>

class QIODevice;

/// The files of other programs: channel editors, receivers' programs, web receivers, schedules. Each format
/// is one file of this folder, reader beside writer, and one line of the table in formats.cpp, from which the
/// programs make their dialogs, help and checks.
namespace Interchange {

class Reading;

/// What a reader is told.
struct ReadOptions {
    /// Fields that our records have no place for are kept in the comment, see `JoinComment`.
    bool keepExtras = false;
    /// Only what is on air at that time, of a format that has schedules.
    std::optional<QDateTime> onAirAt;
    /// Problems are not told, since the file is read again.
    bool isFirstLook = false;
};

/// Receives one entry; the object is used again for the next.
using TakeEntry = std::function<void(const FreqStoreXml::FrequencyStoreEntry&)>;

/// Makes the bytes of a file, entry by entry.
class Encoder {
public:
    virtual ~Encoder() = default;
    virtual void Begin(std::string& /*out*/) {}
    /// Appends the entry's bytes. What the format cannot hold of it is counted; an entry that it cannot hold
    /// at all counts as refused, and nothing is appended.
    virtual void Append(std::string& out, const FreqStoreXml::FrequencyStoreEntry& entry, Account& lost) = 0;
    /// The same for a detection with what a classifier found. Most formats take it as an entry.
    virtual void Append(std::string& out, const FreqStoreXml::DetectionResult& result, Account& lost);
    virtual void End(std::string& /*out*/) {}
    /// Whether the format has a place for all that a record may hold.
    virtual bool HoldsRecords() const { return false; }
};

/// One kind of file.
struct Format {
    const char* id;      ///< on command lines
    const char* name;    ///< a text of the context `Format`
    const char* endings; ///< of names, ".csv .txt"; a file is known by its content first
    const char* lost;    ///< what the format cannot hold of our entries, or we of its, in a sentence
    /// Whether the beginning of a file's text is that of such a file.
    bool (*knows)(const QString& head);
    /// Reads a file. Throws RGException for one that is cut or none of this format. Null for a format that is
    /// only written.
    void (*read)(QIODevice& device, Reading& reading);
    /// Null for a format that is only read.
    std::unique_ptr<Encoder> (*makeEncoder)();
    /// Whether its entries are on air at times that the reader knows.
    bool hasSchedule = false;

    /// Its name in the operator's language.
    QString Name() const;
    /// "read, write", "read" or "write".
    const char* Ways() const { return !read ? "write" : makeEncoder ? "read, write" : "read"; }
};

/// All formats, in the order in which files are asked whether they are such.
std::span<const Format* const> Formats();
/// The format of that id; null when there is none.
const Format* FormatOfId(const QString& id);
/// The format that the content of a file tells; null when it is none of these, or cannot be read.
const Format* FormatOfFile(const QString& path);
/// The same for a text, of which the beginning is enough.
const Format* FormatOfText(const QString& head);

/// Reads a file and hands on its entries in their order. Lines that are no entries are told as problems and
/// counted. Throws RGException "file:line: reason" for a file that cannot be read to its end, having handed
/// on the entries before.
Account Read(const Format& format, const QString& path, const ReadOptions& options, const TakeEntry& take);
/// The same for an open device of the caller's; `name` stands for it in error texts.
Account Read(const Format& format, QIODevice& device, const QString& name, const ReadOptions& options,
             const TakeEntry& take);

using Content = FreqStoreXml::ListContent;

/// Writes a file, whole or not at all; throws RGException "file: reason". What the format cannot hold is told
/// to `confirm` before the file takes its place; when that answers false, the file is as it was, and nothing
/// is given back.
std::optional<Account> Write(const Format& format, const QString& path, const Content& content,
                             const std::function<bool(const Account&)>& confirm = {});
/// The bytes that would be written, and what they could not hold.
std::string ToBytes(const Format& format, const Content& content, Account* lost = nullptr);

} // namespace Interchange
