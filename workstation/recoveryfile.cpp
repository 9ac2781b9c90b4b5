#include "workstation/recoveryfile.h"

#include "host/report/byteinput.h"
#include "host/report/filestamps.h"
#include "host/report/privatefile.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <optional>
#include <unistd.h>

namespace {

constexpr char SectionMark[] = "list ";
constexpr char PieceMark[] = "piece ";
constexpr char EndMark[] = "end ";
constexpr char PastMark[] = "past ";
constexpr qint64 LongestLine = 1 << 16;
constexpr qint64 BlockBytes = 1 << 20;
constexpr char EntryEnd[] = "</FrequencyStoreEntry>";
constexpr char ListEnd[] = "\n</FrequencyStoreList>\n";

/// The words behind a mark; none when the line has another.
QList<QByteArray> wordsBehind(const QByteArray& line, const char* mark) {
    if (!line.startsWith(mark) || !line.endsWith('\n'))
        return {};
    return line.mid(static_cast<qsizetype>(qstrlen(mark))).chopped(1).split(' ');
}

QByteArray encoded(const QString& text) {
    return text.toUtf8().toPercentEncoding();
}

QString decoded(const QByteArray& text) {
    return QString::fromUtf8(QByteArray::fromPercentEncoding(text));
}

QByteArray hashOf(const QByteArray& bytes) {
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
}

} // namespace

QByteArray RecoveryHead::ToLine() const {
    return SectionMark +
           QByteArrayList{encoded(key), encoded(suffix), QByteArray::number(time), encoded(file),
                          QByteArray::number(fileTime)}
               .join(' ') +
           '\n';
}

bool RecoveryHead::FromLine(const QByteArray& line) {
    const QList<QByteArray> words = wordsBehind(line, SectionMark);
    if (words.size() != 5)
        return false;
    key = decoded(words[0]);
    suffix = decoded(words[1]);
    time = words[2].toLongLong();
    file = decoded(words[3]);
    fileTime = words[4].toLongLong();
    return !key.isEmpty() && !suffix.contains(QLatin1Char('/'));
}

/// The last word is the hash of those before: a line that was cut may look like another one.
QByteArray RecoveryPast::ToLine() const {
    const QByteArray words =
        QByteArrayList{encoded(key), encoded(file), QByteArray::number(fileTime)}.join(' ');
    return PastMark + words + ' ' + hashOf(words) + '\n';
}

bool RecoveryPast::FromLine(const QByteArray& line) {
    const QList<QByteArray> words = wordsBehind(line, PastMark);
    if (words.size() != 4 || hashOf(words.first(3).join(' ')) != words[3])
        return false;
    key = decoded(words[0]);
    file = decoded(words[1]);
    fileTime = words[2].toLongLong();
    return true;
}

bool RecoveryPast::Holds() const {
    if (file.isEmpty())
        return true;
    const std::optional<FileStamps::State> state = FileStamps::State::Of(file);
    return state && state->modified == fileTime;
}

bool RecoveryForm::AddPast(const QString& path, const RecoveryPast& past) {
    QFile file(path);
    const QByteArray line = past.ToLine();
    return file.open(QIODevice::Append | QIODevice::ExistingOnly | QIODevice::Unbuffered) &&
           file.write(line) == line.size() && ::fsync(file.handle()) == 0;
}

QByteArray RecoveryForm::PieceLine(qsizetype bytes) {
    return PieceMark + QByteArray::number(bytes) + '\n';
}

QByteArray RecoveryForm::EndLine(qint64 entries, const QByteArray& hash) {
    return EndMark + QByteArray::number(entries) + ' ' + hash + '\n';
}

void RecoveryDone::Close() const {
    if (isLast)
        QFile::remove(path);
    else
        RecoveryForm::AddPast(path, {key, QString(), 0});
}

RecoveryReader::RecoveryReader(const QString& path) : m_path(path) {
    read();
    for (RecoverySection& section : m_sections)
        if (!section.isWhole)
            section.entries = countEntries(section);
}

/// Those that are there to their end.
qint64 RecoveryReader::countEntries(const RecoverySection& section) const {
    constexpr qsizetype MarkBytes = sizeof EntryEnd - 1;
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    qint64 count = 0;
    for (const auto& [offset, length] : section.pieces) {
        file.seek(offset);
        QByteArray bytes = file.read(std::min(length, BlockBytes));
        for (qint64 left = length - bytes.size(); !bytes.isEmpty(); left -= BlockBytes) {
            count += bytes.count(EntryEnd);
            if (left <= 0)
                break;
            bytes = bytes.last(std::min(MarkBytes - 1, bytes.size())) + file.read(std::min(left, BlockBytes));
        }
    }
    return count;
}

void RecoveryReader::note(const RecoveryPast& past) {
    const auto section =
        std::ranges::find(m_sections, past.key, [](const RecoverySection& one) { return one.head.key; });
    if (section == m_sections.end() || !past.Holds())
        return;
    section->isPast = true;
    section->savedIn = past.file;
}

void RecoveryReader::read() {
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly) || file.readLine(LongestLine) != RecoveryForm::FirstLine)
        return;
    QCryptographicHash hash(QCryptographicHash::Sha256);
    while (!file.atEnd()) {
        const QByteArray line = file.readLine(LongestLine);
        RecoverySection* const open =
            m_sections.empty() || m_sections.back().entries >= 0 ? nullptr : &m_sections.back();
        RecoverySection next;
        if (!open && next.head.FromLine(line)) {
            hash.reset();
            hash.addData(line);
            m_sections.push_back(std::move(next));
            continue;
        }
        if (RecoveryPast past; !open && past.FromLine(line)) {
            note(past);
            continue;
        }
        if (!open)
            return;
        if (const QList<QByteArray> words = wordsBehind(line, EndMark); words.size() == 2) {
            open->entries = std::max<qint64>(words[0].toLongLong(), 0);
            hash.addData(words[0]);
            open->isWhole = hash.result().toHex() == words[1];
            continue;
        }
        const QList<QByteArray> words = wordsBehind(line, PieceMark);
        const qint64 begin = file.pos();
        const qint64 length = words.size() == 1 ? std::min(words[0].toLongLong(), file.size() - begin) : 0;
        if (length <= 0)
            return;
        hash.addData(line);
        qint64 left = length;
        while (left > 0) {
            const QByteArray block = file.read(std::min(left, BlockBytes));
            if (block.isEmpty())
                return;
            hash.addData(block);
            left -= block.size();
        }
        open->pieces.emplace_back(begin, length);
    }
}

void RecoveryReader::Extract(const RecoverySection& section, const QString& path) const {
    QFile file(m_path);
    REPORTGENERATOR::OpenForReading(file);
    REPORTGENERATOR::PrivateFile written(QFileInfo(path).path());
    QByteArray held; // behind the last whole entry, of a list that was cut
    for (const auto& [offset, length] : section.pieces) {
        file.seek(offset);
        for (qint64 left = length; left > 0;) {
            const QByteArray block = file.read(std::min(left, BlockBytes));
            if (block.isEmpty())
                throw RGException(REPORTGENERATOR::ErrorText(m_path, 0, file.errorString()));
            left -= block.size();
            if (section.isWhole) {
                written.Write(block);
                continue;
            }
            held += block;
            if (const qsizetype end = held.lastIndexOf(EntryEnd); end >= 0) {
                const qsizetype whole = end + static_cast<qsizetype>(qstrlen(EntryEnd));
                written.Write(QByteArrayView(held).first(whole));
                held.remove(0, whole);
            }
        }
    }
    if (!section.isWhole)
        written.Write(ListEnd);
    written.Commit(path);
}
