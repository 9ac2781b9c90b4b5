#include "host/report/outputfile.h"

#include "host/base/longwork.h"
#include "host/base/trace.h"
#include "host/report/byteinput.h"
#include "host/report/filestamps.h"
#include "host/report/leftovers.h"
#include "host/report/writeguard.h"

#include <QDir>
#include <QFileInfo>
#include <QIODevice>

#include <cerrno>
#include <climits>
#include <csignal>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace REPORTGENERATOR {

namespace {

constexpr char TraceSource[] = "outputfile";

std::optional<Problem>& lastFailure() {
    static auto* const last = new std::optional<Problem>;
    return *last;
}

WriteGuard* currentGuard = nullptr;

/// Tells the operator and remembers; whoever catches the exception traces it.
void tellFailure(const QString& fileName, const QString& reason) {
    lastFailure() = Problem{fileName, 0, reason};
    Problems::Tell(*lastFailure());
}

void tellKept(TracePlace place, const QString& fileName, const QString& instead) {
    Problems::Report(place,
                     {fileName, 0, QStringLiteral("was changed by another program and is kept; ") + instead});
}

QString cannotBeWritten(const QString& reason) {
    return QStringLiteral("cannot be written: ") + reason;
}

QString reasonOf(int error) {
    return cannotBeWritten(qt_error_string(error));
}

/// A limit of the size of files is a failure like others, not the end of the process.
void takeSizeLimitAsFailure() {
    struct sigaction present {};
    if (::sigaction(SIGXFSZ, nullptr, &present) == 0 && present.sa_handler == SIG_DFL)
        std::signal(SIGXFSZ, SIG_IGN);
}

/// What a link names, which need not be there. Its "..", if any, is that of the folder in which it really is.
QString linkedFrom(const QString& link) {
    QByteArray name(PATH_MAX, '\0');
    const ssize_t size = ::readlink(QFile::encodeName(link).constData(), name.data(), PATH_MAX);
    name.truncate(std::max<ssize_t>(size, 0));
    const QString linked = QFile::decodeName(name);
    if (linked.startsWith(QLatin1Char('/')))
        return linked;
    return QFileInfo(QFileInfo(link).path()).canonicalFilePath() + QLatin1Char('/') + linked;
}

/// Whether a file holds those bytes already, and they are on the disk: another program may have written it.
bool standsAlready(const QString& bytesOf, const QString& place) {
    constexpr qint64 BlockBytes = 1 << 20;
    QFile a(bytesOf);
    QFile b(place);
    if (!a.open(QIODevice::ReadOnly | QIODevice::Unbuffered) ||
        !b.open(QIODevice::ReadOnly | QIODevice::Unbuffered) || a.size() != b.size())
        return false;
    for (;;) {
        const QByteArray bytes = a.read(BlockBytes);
        if (bytes != b.read(BlockBytes))
            return false;
        if (bytes.size() < BlockBytes)
            return a.error() == QFileDevice::NoError && b.error() == QFileDevice::NoError &&
                   ::fsync(b.handle()) == 0;
    }
}

} // namespace

/// The new file while it is written; it goes with the object unless it was put in its place. What fails first
/// is told and kept.
class OutputFile::Temporary final : public QIODevice {
public:
    Temporary(const QString& fileName, const QString& target);
    ~Temporary() override;

    const QString& Name() const { return m_name; }
    int Error() const { return m_error; }
    /// Keeps what errno says; always false.
    bool Fail();
    /// Brings all bytes to the disk.
    bool Sync() { return (::fsync(m_handle) == 0 && ::close(std::exchange(m_handle, -1)) == 0) || Fail(); }
    bool MoveTo(const QString& place);

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char* data, qint64 size) override;

private:
    void takePermissions(const QString& target) const;

    QString m_fileName;
    QString m_name;
    int m_handle = -1;
    int m_error = 0;
};

OutputFile::Temporary::Temporary(const QString& fileName, const QString& target) : m_fileName(fileName) {
    takeSizeLimitAsFailure();
    const QString folder = QFileInfo(target).path();
    RemoveLeftovers(folder);
    do {
        m_name = TemporaryName(folder);
        m_handle =
            ::open(QFile::encodeName(m_name).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    } while (m_handle < 0 && errno == EEXIST);
    if (m_handle < 0) {
        Fail();
        m_name.clear();
        return;
    }
    takePermissions(target);
    open(WriteOnly | Unbuffered);
}

OutputFile::Temporary::~Temporary() {
    if (m_handle >= 0)
        ::close(m_handle);
    if (!m_name.isEmpty())
        ::unlink(QFile::encodeName(m_name).constData());
}

/// Those of the old file, as far as this user may set them: only root can give a file to another user.
void OutputFile::Temporary::takePermissions(const QString& target) const {
    constexpr auto Same = static_cast<uid_t>(-1);
    struct stat old {};
    struct stat now {};
    if (::stat(QFile::encodeName(target).constData(), &old) != 0 || ::fstat(m_handle, &now) != 0)
        return;
    const bool hasGroup = now.st_gid == old.st_gid || ::fchown(m_handle, Same, old.st_gid) == 0;
    if (now.st_uid != old.st_uid && ::fchown(m_handle, old.st_uid, Same) != 0)
        TraceLazily(TraceSource, [&] { return target + QStringLiteral(": changes its owner"); });
    // What one group may do is not for another.
    ::fchmod(m_handle, old.st_mode & (hasGroup ? 0777u : 0707u));
}

bool OutputFile::Temporary::Fail() {
    if (m_error == 0) {
        m_error = errno;
        setErrorString(qt_error_string(m_error));
        tellFailure(m_fileName, reasonOf(m_error));
    }
    return false;
}

qint64 OutputFile::Temporary::writeData(const char* data, qint64 size) {
    qint64 done = 0;
    while (m_error == 0 && done < size) {
        const ssize_t count = ::write(m_handle, data + done, static_cast<size_t>(size - done));
        if (count >= 0)
            done += count;
        else if (errno != EINTR)
            Fail();
    }
    return m_error == 0 ? done : -1;
}

bool OutputFile::Temporary::MoveTo(const QString& place) {
    if (::rename(QFile::encodeName(m_name).constData(), QFile::encodeName(place).constData()) != 0)
        return Fail();
    m_name.clear();
    return true;
}

OutputFile::OutputFile(const QString& fileName) : m_fileName(fileName), m_target(findTarget()) {
    m_temporary = std::make_unique<Temporary>(m_fileName, m_target);
    check(m_temporary->Error() == 0);
}

OutputFile::~OutputFile() = default;

void OutputFile::fail(int error) const {
    throw RGException(ErrorText(m_fileName, 0, reasonOf(error)));
}

/// Throws what the temporary file has told.
void OutputFile::check(bool succeeded) const {
    if (!succeeded)
        fail(m_temporary->Error());
}

/// Follows links to the file itself, which need not be there yet.
QString OutputFile::findTarget() const {
    const auto refuse = [this](int error) {
        tellFailure(m_fileName, reasonOf(error));
        fail(error);
    };
    const QByteArray name = QFile::encodeName(m_fileName);
    struct stat file {};
    if (::stat(name.constData(), &file) == 0) {
        if (!S_ISREG(file.st_mode)) {
            const QString reason = QStringLiteral("this is no ordinary file");
            tellFailure(m_fileName, reason);
            throw RGException(ErrorText(m_fileName, 0, reason));
        }
        if (::faccessat(AT_FDCWD, name.constData(), W_OK, AT_EACCESS) != 0)
            refuse(errno);
    } else if (errno != ENOENT) {
        refuse(errno);
    }
    QString target = m_fileName;
    while (QFileInfo(target).isSymLink()) // they end somewhere: the system has followed them
        target = linkedFrom(target);
    if (QFileInfo(target).fileName().isEmpty())
        refuse(m_fileName.isEmpty() ? ENOENT : EISDIR);
    return target;
}

QIODevice& OutputFile::Device() {
    return *m_temporary;
}

/// Takes the place of an empty file of its own making, so that no other program gets the name meanwhile.
void OutputFile::moveBeside() {
    int handle = -1;
    do {
        m_writtenName = FreeNameBeside(m_target);
        handle = ::open(QFile::encodeName(m_writtenName).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC,
                        0600);
    } while (handle < 0 && errno == EEXIST);
    check(handle >= 0 || m_temporary->Fail());
    ::close(handle);
    if (!m_temporary->MoveTo(m_writtenName)) {
        QFile::remove(m_writtenName);
        check(false);
    }
    FileStamps::NoteRead(m_writtenName);
    FileStamps::NoteBeside(m_target, m_writtenName);
    tellKept(TraceSource, m_fileName, QStringLiteral("written as ") + m_writtenName);
}

/// Whether a file stays as another program has left it; what is new then stands beside it.
bool OutputFile::keepsChanged() {
    if (m_replaceAnyway || !FileStamps::IsChanged(m_target))
        return false;
    if (FileStamps::IsKnown(m_target, m_temporary->Name())) {
        tellKept(TraceSource, m_fileName, QStringLiteral("nothing is written, since nothing is new"));
        return true;
    }
    switch (currentGuard ? currentGuard->FileIsChanged(m_target) : WriteGuard::Answer::WriteBeside) {
    case WriteGuard::Answer::Replace:
        return false;
    case WriteGuard::Answer::WriteBeside:
        moveBeside();
        return true;
    case WriteGuard::Answer::Cancel:
        break;
    }
    const QString reason = QStringLiteral("was changed by another program and is kept");
    tellFailure(m_fileName, reason);
    throw RGException(ErrorText(m_fileName, 0, reason));
}

void OutputFile::Commit() {
    check(m_temporary->Error() == 0);
    m_writtenName = m_fileName;
    bool isNew = false;
    LongWork::Elsewhere([&] {
        isNew = !standsAlready(m_temporary->Name(), m_target);
        if (isNew)
            m_temporary->Sync();
    });
    const LongWork::Unbroken replacing;
    if (isNew) {
        check(m_temporary->Error() == 0);
        if (keepsChanged())
            return;
        if (currentGuard)
            currentGuard->Replacing(m_target, m_temporary->Name());
        check(m_temporary->MoveTo(m_target));
        if (currentGuard)
            currentGuard->Replaced(m_target, m_entries);
    } else if (currentGuard) {
        currentGuard->Unchanged(m_target);
    }
    FileStamps::NoteRead(m_writtenName);
}

WriteGuard* SetWriteGuard(WriteGuard* guard) {
    return std::exchange(currentGuard, guard);
}

const std::optional<Problem>& LastWriteFailure() {
    return lastFailure();
}

void ForgetWriteFailure() {
    lastFailure().reset();
}

QString FreeNameBeside(const QString& fileName) {
    const QFileInfo file(fileName);
    const QString suffix = file.suffix().isEmpty() ? QString() : QLatin1Char('.') + file.suffix();
    for (int number = 2;; ++number) {
        const QString name = file.dir().filePath(file.completeBaseName() + QLatin1Char('-') +
                                                 QString::number(number) + suffix);
        if (!QFileInfo::exists(name) && !QFileInfo(name).isSymLink())
            return name;
    }
}

bool WriteCopy(const QString& from, const QString& fileName) {
    constexpr qint64 BlockBytes = 1 << 20;
    QFile copy(from);
    if (!copy.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        tellFailure(fileName, cannotBeWritten(copy.errorString()));
        return false;
    }
    try {
        OutputFile file(fileName);
        for (QByteArray block = copy.read(BlockBytes); !block.isEmpty(); block = copy.read(BlockBytes))
            WriteBytes(file.Device(), fileName, block);
        file.Commit();
        return true;
    } catch (const RGException& exception) {
        TraceLazily(TraceSource, [&] { return exception.GetErrorText(); });
        return false;
    }
}

void WriteBytes(QIODevice& device, const QString& name, QByteArrayView bytes) {
    const char* data = bytes.data();
    auto left = static_cast<qint64>(bytes.size());
    while (left > 0) {
        const qint64 written = device.write(data, left);
        if (written <= 0)
            throw RGException(ErrorText(name, 0, cannotBeWritten(device.errorString())));
        data += written;
        left -= written;
    }
}

} // namespace REPORTGENERATOR
