#pragma once

#include "host/report/rgexception.h"

#include <QSaveFile>
#include <QString>

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

/// Writes all of the bytes or throws RGException "name: reason".
void WriteBytes(QIODevice& device, const QString& name, const std::string& bytes);

} // namespace REPORTGENERATOR
