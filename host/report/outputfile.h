#pragma once

#include "host/base/problems.h"
#include "host/report/rgexception.h"

#include <QSaveFile>
#include <QString>

#include <optional>
#include <string>

namespace REPORTGENERATOR {

/// A file that is written aside and takes the place of the old one when it is complete. All operations throw
/// RGException "file: reason"; one that is destroyed without Commit() leaves the old file untouched.
class OutputFile {
public:
    /// Refuses a name that stands for a folder or device.
    explicit OutputFile(const QString& fileName);

    QIODevice& Device() { return m_file; }
    void Commit();

private:
    QSaveFile m_file;
};

/// What the last failed write of this process was, until it is forgotten.
const std::optional<Problem>& LastWriteFailure();
void ForgetWriteFailure();

/// The first of "name-2.ext", "name-3.ext", ... in the file's folder that no file has.
QString FreeNameBeside(const QString& fileName);

/// Writes all of the bytes or throws RGException "name: reason".
void WriteBytes(QIODevice& device, const QString& name, const std::string& bytes);

} // namespace REPORTGENERATOR
