#include "host/report/privatefile.h"

#include "host/report/byteinput.h"
#include "host/report/leftovers.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace REPORTGENERATOR {

namespace {

constexpr mode_t OwnerOnly = 0600;
constexpr mode_t OwnersFolder = 0700;

[[noreturn]] void failWith(const QString& name, int error) {
    throw RGException(
        ErrorText(name, 0, QStringLiteral("cannot be written: %1").arg(qt_error_string(error))));
}

/// A new name in a folder is on the disk when the folder is.
void syncFolder(const QString& folder) {
    const int handle = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0)
        return;
    ::fsync(handle); // file systems that cannot do this need it not
    ::close(handle);
}

} // namespace

PrivateFile::PrivateFile(const QString& folder) : m_folder(folder) {
    do {
        m_name = TemporaryName(folder);
        m_handle =
            ::open(QFile::encodeName(m_name).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, OwnerOnly);
    } while (m_handle < 0 && errno == EEXIST);
    if (m_handle < 0)
        fail();
}

PrivateFile::~PrivateFile() {
    if (m_handle < 0)
        return;
    ::close(m_handle);
    ::unlink(QFile::encodeName(m_name).constData());
}

void PrivateFile::fail() const {
    failWith(m_folder, errno);
}

void PrivateFile::Write(QByteArrayView bytes) {
    const char* data = bytes.data();
    auto left = static_cast<size_t>(bytes.size());
    while (left > 0) {
        const ssize_t count = ::write(m_handle, data, left);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            fail();
        data += count;
        left -= static_cast<size_t>(count);
    }
}

void PrivateFile::Commit(const QString& path) {
    if (::fsync(m_handle) != 0 ||
        ::rename(QFile::encodeName(m_name).constData(), QFile::encodeName(path).constData()) != 0)
        fail();
    ::close(std::exchange(m_handle, -1));
    syncFolder(m_folder);
}

void PrivateFile::MakeFolder(const QString& folder) {
    if (QDir(folder).exists())
        return;
    const QString above = QFileInfo(folder).path();
    if (above != folder && !QDir(above).exists())
        MakeFolder(above);
    if (::mkdir(QFile::encodeName(folder).constData(), OwnersFolder) != 0 && errno != EEXIST)
        failWith(folder, errno);
}

} // namespace REPORTGENERATOR
