#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

/// A folder of files for one test, which a fixture has beside its own.
class TestFolder {
protected:
    /// A file's path; one that is a path already stays.
    QString Path(const QString& name) const { return QDir(m_folder.path()).absoluteFilePath(name); }
    QString Write(const QString& name, const QByteArray& bytes) const {
        QFile file(Path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size())
            << name.toStdString();
        return file.fileName();
    }
    QByteArray Read(const QString& name) const {
        QFile file(Path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<no such file>");
    }
    QStringList FileNames() const { return QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden); }

    QTemporaryDir m_folder;
};
