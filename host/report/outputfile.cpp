#include "host/report/outputfile.h"

#include "host/report/byteinput.h"

#include <QDir>
#include <QFileInfo>

namespace REPORTGENERATOR {

namespace {

std::optional<Problem> lastFailure;

[[noreturn]] void fail(const QString& fileName, const QString& reason) {
    lastFailure = Problem{fileName, 0, reason};
    throw RGException(ErrorText(fileName, 0, reason));
}

} // namespace

const std::optional<Problem>& LastWriteFailure() {
    return lastFailure;
}

void ForgetWriteFailure() {
    lastFailure.reset();
}

QString FreeNameBeside(const QString& fileName) {
    const QFileInfo file(fileName);
    QString free = fileName;
    for (int number = 2; QFileInfo::exists(free); ++number)
        free = file.dir().filePath(
            QStringLiteral("%1-%2.%3").arg(file.completeBaseName(), QString::number(number), file.suffix()));
    return free;
}

OutputFile::OutputFile(const QString& fileName) : m_file(fileName) {
    const QFileInfo info(fileName);
    if (info.exists() && !info.isFile())
        fail(fileName, QStringLiteral("this is no ordinary file"));
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        fail(fileName, QStringLiteral("cannot be written: ") + m_file.errorString());
}

void OutputFile::Commit() {
    if (!m_file.commit())
        fail(m_file.fileName(), QStringLiteral("cannot be written: ") + m_file.errorString());
}

void WriteBytes(QIODevice& device, const QString& name, const std::string& bytes) {
    const char* data = bytes.data();
    auto left = static_cast<qint64>(bytes.size());
    while (left > 0) {
        const qint64 written = device.write(data, left);
        if (written <= 0)
            fail(name, QStringLiteral("cannot be written: ") + device.errorString());
        data += written;
        left -= written;
    }
}

} // namespace REPORTGENERATOR
