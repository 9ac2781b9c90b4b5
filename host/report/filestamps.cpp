#include "host/report/filestamps.h"

#include "host/base/longwork.h"
#include "host/base/problems.h"

#include <QFile>
#include <QFileInfo>

#include <chrono>
#include <mutex>
#include <sys/stat.h>
#include <unordered_map>

namespace FileStamps {

namespace {

constexpr qsizetype BlockBytes = 1 << 20;
/// A file may change again within the same tick of its clock; on some file systems a tick is two seconds.
constexpr qint64 TickNanoseconds = 2'000'000'000;

struct Stamp {
    State state;
    bool isSettled = false;     ///< no further change can leave the state as it is
    std::optional<size_t> hash; ///< nothing when the content that was read is not known whole
};

/// By canonical path.
std::unordered_map<QString, Stamp>& stamps() {
    static auto* const known = new std::unordered_map<QString, Stamp>;
    return *known;
}

std::mutex& mutex() {
    static auto* const ofStamps = new std::mutex;
    return *ofStamps;
}

QString keyOf(const QString& path) {
    return QFileInfo(path).canonicalFilePath();
}

qint64 now() {
    using namespace std::chrono;
    return duration_cast<nanoseconds>(system_clock::now().time_since_epoch()).count();
}

std::optional<size_t> hashOf(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return std::nullopt;
    QByteArray block(BlockBytes, Qt::Uninitialized);
    size_t hash = 0;
    qint64 count = 0;
    while ((count = file.read(block.data(), block.size())) > 0)
        hash = qHashBits(block.constData(), static_cast<size_t>(count), hash);
    if (count < 0)
        return std::nullopt;
    return hash;
}

void note(const QString& path, const std::optional<State>& state, std::optional<size_t> hash) {
    const QString key = keyOf(path);
    const std::lock_guard lock(mutex());
    if (state && !key.isEmpty())
        stamps()[key] = {*state, now() - state->modified > TickNanoseconds, hash};
}

std::optional<Stamp> stampOf(const QString& path) {
    const QString key = keyOf(path);
    const std::lock_guard lock(mutex());
    const auto known = stamps().find(key);
    return known == stamps().end() ? std::nullopt : std::optional(known->second);
}

} // namespace

std::optional<State> State::Of(const QString& path) {
    constexpr qint64 Second = 1'000'000'000;
    struct stat file {};
    if (::stat(QFile::encodeName(path).constData(), &file) != 0)
        return std::nullopt;
    return State{file.st_dev, file.st_ino, file.st_size, file.st_mtim.tv_sec * Second + file.st_mtim.tv_nsec};
}

void NoteRead(const QString& path) {
    const std::optional<State> state = State::Of(path);
    std::optional<size_t> hash;
    LongWork::Elsewhere([&] { hash = hashOf(path); });
    note(path, state, hash);
}

bool IsChanged(const QString& path) {
    const std::optional<Stamp> stamp = stampOf(path);
    const std::optional<State> state = State::Of(path);
    if (!stamp || !state || (stamp->hash && stamp->isSettled && stamp->state == *state))
        return false;
    return !stamp->hash || stamp->state.size != state->size || stamp->hash != hashOf(path);
}

bool IsKnown(const QString& path, const QString& copy) {
    const std::optional<Stamp> stamp = stampOf(path);
    const std::optional<State> state = State::Of(copy);
    return stamp && state && stamp->hash && stamp->state.size == state->size && stamp->hash == hashOf(copy);
}

void NoteBeside(const QString& path, const QString& copy) {
    note(path, State::Of(copy), hashOf(copy));
}

void ForgetAll() {
    const std::lock_guard lock(mutex());
    stamps().clear();
}

Reading::Reading(const QString& path) : m_path(path), m_before(State::Of(path)) {}

Reading::~Reading() {
    if (!m_checked)
        Check();
}

bool Reading::Finish() {
    std::optional<size_t> hash;
    LongWork::Elsewhere([&] { hash = hashOf(m_path); });
    if (!Check())
        return false;
    note(m_path, m_before, hash);
    return true;
}

bool Reading::Check() {
    m_checked = true;
    if (m_before == State::Of(m_path))
        return true;
    note(m_path, m_before, std::nullopt); // what was read is neither the old content nor the new one
    Problems::Report("filestamps", {m_path, 0, QStringLiteral("changed while it was read")});
    return false;
}

} // namespace FileStamps
