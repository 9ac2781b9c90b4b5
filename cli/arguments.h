#pragma once

#include "cli/list.h"

#include <QCommandLineParser>

#include <memory>

/// What the commands share of their command lines: help, `--list KIND`, a count of file names. A wrong
/// command line is told on standard error.
class Arguments {
public:
    /// In place of a number of file names; -1 stands for one or more.
    static constexpr int AnyNumber = -2;

    /// `usage` is shown by the help; `files` is the number of file names. A command
    /// that concerns no list has no `--list`.
    Arguments(const char* command, const char* usage, int files, bool takesList = true);

    QCommandLineParser& Parser() { return m_parser; }
    /// Takes the arguments behind the command's name; false when they are wrong or the help was shown, and
    /// `exitCode` is then the program's.
    bool Take(const QStringList& arguments, int& exitCode);
    /// The list of `--list`, or without it the one that reads files such as this; null, told, when there is
    /// no such kind.
    std::unique_ptr<CliList> List(const QString& path) const;
    /// Tells, under the command's name, why the command line is wrong.
    void TellUsage(const QString& reason) const;
    QStringList Files() const { return m_parser.positionalArguments(); }
    bool IsSet(const char* option) const { return m_parser.isSet(QString::fromLatin1(option)); }
    QString Value(const char* option) const { return m_parser.value(QString::fromLatin1(option)); }

private:
    QCommandLineParser m_parser;
    QString m_command;
    int m_files;
};
