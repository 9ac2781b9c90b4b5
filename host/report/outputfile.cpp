#include "host/report/outputfile.h"

#include "host/report/byteinput.h"

#include <QFileInfo>

namespace REPORTGENERATOR {

OutputFile::OutputFile(const QString& fileName) : m_file(fileName) {
    const QFileInfo info(fileName);
    if (info.exists() && !info.isFile())
        throw RGException(ErrorText(fileName, 0, QStringLiteral("this is no ordinary file")));
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        throw RGException(
            ErrorText(fileName, 0, QStringLiteral("cannot be written: ") + m_file.errorString()));
}

void OutputFile::Commit() {
    if (!m_file.commit())
        throw RGException(
            ErrorText(m_file.fileName(), 0, QStringLiteral("cannot be written: ") + m_file.errorString()));
}

void WriteBytes(QIODevice& device, const QString& name, const std::string& bytes) {
    const char* data = bytes.data();
    auto left = static_cast<qint64>(bytes.size());
    while (left > 0) {
        const qint64 written = device.write(data, left);
        if (written <= 0)
            throw RGException(
                ErrorText(name, 0, QStringLiteral("cannot be written: ") + device.errorString()));
        data += written;
        left -= written;
    }
}

} // namespace REPORTGENERATOR
