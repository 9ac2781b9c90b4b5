#pragma once

#include "cli/command.h"
#include "cli/list.h"
#include "tests/support/testfolder.h"
#include "tests/support/text.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>
#include <string>

/// The path of a sample file.
inline QString Sample(const QString& name) {
    return QStringLiteral(SAMPLES_DIR "/") + name;
}

/// What one run of the program answered.
struct CliResult {
    int exitCode;
    std::string out;
    std::string err;

    /// Whether it ended with this code and told this, on standard error or, where all was well, on standard
    /// output.
    testing::AssertionResult Is(int code, const QString& told = {}) const {
        const std::string& text = code == ExitDone ? out : err;
        if (exitCode == code && text.find(told.toStdString()) != std::string::npos)
            return testing::AssertionSuccess();
        return testing::AssertionFailure()
               << "exit code " << exitCode << ", not " << code << " with \"" << told.toStdString() << "\":\n"
               << err << out;
    }
};

inline CliResult Cli(const QStringList& arguments) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const int exitCode = RunCli(arguments);
    EndLeftLists(); // other tests of this process find no entries
    std::fflush(stdout);
    std::fflush(stderr);
    return {exitCode, testing::internal::GetCapturedStdout(), testing::internal::GetCapturedStderr()};
}

/// Runs with the words of a command, and further arguments behind them.
inline CliResult Cli(const char* words, const QStringList& further = {}) {
    return Cli(Q(words).split(QLatin1Char(' ')) + further);
}

/// The entries of a file, as a command ("show --list noi") tells them in JSON.
inline QJsonArray ShownBy(const char* command, const QStringList& further, int exitCode = ExitDone) {
    const CliResult shown = Cli(command, further + QStringList{"--format", "json"});
    EXPECT_TRUE(shown.Is(exitCode));
    return QJsonDocument::fromJson(QByteArray::fromStdString(shown.out)).array();
}
