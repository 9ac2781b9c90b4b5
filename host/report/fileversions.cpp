#include "host/report/fileversions.h"

#include "host/report/byteinput.h"
#include "host/report/filestamps.h"
#include "host/report/leftovers.h"
#include "host/report/privatefile.h"

#include <QCryptographicHash>
#include <QDir>
#include <QRegularExpression>

#include <optional>

using REPORTGENERATOR::PrivateFile;

namespace {

constexpr qsizetype BlockBytes = 1 << 20;
constexpr qint64 NanosecondsPerMicrosecond = 1000;
/// What is left of a file's own name in that of a copy: names end somewhere.
constexpr qsizetype NameBytes = 120;
constexpr char PathFile[] = "path"; ///< tells whoever looks into the folder whose versions these are

struct Copy : FileVersions::Version {
    qint64 number = 0; ///< the higher, the newer
};

/// "number_time_entries_hash_name"
std::optional<Copy> copyOf(const QFileInfo& file) {
    static const QRegularExpression pattern(
        QStringLiteral("\\A([0-9]{1,18})_(-?[0-9]{1,18})_(-?[0-9]{1,18})_([0-9a-f]{64})_"));
    const QRegularExpressionMatch match = pattern.match(file.fileName());
    if (!match.hasMatch())
        return std::nullopt;
    Copy copy;
    copy.number = match.captured(1).toLongLong();
    copy.time = match.captured(2).toLongLong();
    copy.entries = match.captured(3).toLongLong();
    copy.hash = match.captured(4).toLatin1();
    copy.size = file.size();
    copy.path = file.filePath();
    return copy;
}

QString nameOf(const Copy& copy, const QString& file) {
    QByteArray name = QFile::encodeName(QFileInfo(file).fileName());
    name = name.right(NameBytes);
    while (!name.isEmpty() && (name.front() & 0xC0) == 0x80) // not within a character
        name.remove(0, 1);
    return QStringLiteral("%1_%2_%3_").arg(copy.number).arg(copy.time).arg(copy.entries) +
           QString::fromLatin1(copy.hash) + QLatin1Char('_') + QFile::decodeName(name);
}

/// Newest first.
std::vector<Copy> copiesIn(const QString& folder) {
    std::vector<Copy> copies;
    for (const QFileInfo& file : QDir(folder).entryInfoList(QDir::Files))
        if (std::optional<Copy> copy = copyOf(file))
            copies.push_back(std::move(*copy));
    std::ranges::sort(copies, std::greater(),
                      [](const Copy& copy) { return std::pair(copy.number, copy.time); });
    return copies;
}

/// Where a file is, or was, behind all links.
QString placeOf(const QString& file) {
    const QFileInfo info(file);
    if (const QString there = info.canonicalFilePath(); !there.isEmpty())
        return there;
    const QString folder = QFileInfo(info.path()).canonicalFilePath();
    return QDir(folder.isEmpty() ? info.absolutePath() : folder).filePath(info.fileName());
}

/// Passes the content on in blocks and answers with its hash, in hexadecimal digits.
template <typename Take>
QByteArray readAndHash(const QString& path, Take take) {
    QFile file(path);
    const auto fail = [&] { throw RGException(REPORTGENERATOR::ErrorText(path, 0, file.errorString())); };
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        fail();
    QCryptographicHash hash(QCryptographicHash::Sha256);
    QByteArray block(BlockBytes, Qt::Uninitialized);
    qint64 count = 0;
    while ((count = file.read(block.data(), block.size())) > 0) {
        const QByteArrayView bytes(block.constData(), static_cast<qsizetype>(count));
        hash.addData(bytes);
        take(bytes);
    }
    if (count < 0)
        fail();
    return hash.result().toHex();
}

} // namespace

QString FileVersions::folderOf(const QString& file) const {
    const QByteArray name = QCryptographicHash::hash(placeOf(file).toUtf8(), QCryptographicHash::Sha256);
    return QDir(m_folder).filePath(QString::fromLatin1(name.toHex().left(32)));
}

std::vector<FileVersions::Version> FileVersions::Of(const QString& file) const {
    std::vector<Version> versions;
    for (Copy& copy : copiesIn(folderOf(file)))
        versions.push_back(std::move(copy));
    return versions;
}

bool FileVersions::IsWhole(const Version& version) {
    try {
        return readAndHash(version.path, [](QByteArrayView) {}) == version.hash;
    } catch (const RGException&) {
        return false;
    }
}

void FileVersions::Keep(const QString& file, qint64 entries) {
    const std::optional<FileStamps::State> state = FileStamps::State::Of(file);
    if (!state || m_limits.count <= 0)
        return;
    Copy copy;
    copy.time = state->modified / NanosecondsPerMicrosecond;
    copy.entries = entries;
    const QString folder = folderOf(file);
    const std::vector<Copy> known = copiesIn(folder);
    if (!known.empty() && known.front().time == copy.time && known.front().size == state->size)
        return;
    if (state->size > m_limits.bytes)
        throw RGException(REPORTGENERATOR::ErrorText(
            file, 0, QStringLiteral("is larger than all versions may be; none of it is kept")));
    PrivateFile::MakeFolder(folder);
    REPORTGENERATOR::RemoveLeftovers(folder);
    PrivateFile written(folder);
    copy.hash = readAndHash(file, [&](QByteArrayView bytes) { written.Write(bytes); });
    if (FileStamps::State::Of(file) != state)
        throw RGException(
            REPORTGENERATOR::ErrorText(file, 0, QStringLiteral("changed while a version of it was kept")));
    copy.number = known.empty() ? 1 : known.front().number + 1;
    written.Commit(QDir(folder).filePath(nameOf(copy, file)));
    for (const Copy& other : known)
        if (other.hash == copy.hash)
            QFile::remove(other.path);
    if (known.empty()) {
        PrivateFile path(folder);
        path.Write(placeOf(file).toUtf8() + '\n');
        path.Commit(QDir(folder).filePath(QLatin1String(PathFile)));
    }
    drop(folder);
}

/// Drops what is too much of one file, then the oldest of all until their sizes fit. The newest version of
/// the file that is being kept stays.
void FileVersions::drop(const QString& folder) const {
    std::vector<Copy> rest;
    qint64 bytes = 0;
    for (const QString& name : QDir(m_folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QString each = QDir(m_folder).filePath(name);
        std::vector<Copy> copies = copiesIn(each);
        const bool isOurs = each == folder;
        for (size_t i = 0; i < copies.size(); ++i) {
            if (isOurs && i >= static_cast<size_t>(m_limits.count)) {
                QFile::remove(copies[i].path);
                continue;
            }
            bytes += copies[i].size;
            if (!isOurs || i > 0)
                rest.push_back(std::move(copies[i]));
        }
    }
    std::ranges::sort(rest, std::less(), [](const Copy& copy) { return copy.time; });
    for (const Copy& copy : rest) {
        if (bytes <= m_limits.bytes)
            return;
        if (QFile::remove(copy.path))
            bytes -= copy.size;
    }
}
