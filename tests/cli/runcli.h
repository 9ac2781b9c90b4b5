#pragma once

#include "cli/command.h"
#include "tests/support/text.h"

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
};

inline CliResult Cli(const QStringList& arguments) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const int exitCode = RunCli(arguments);
    std::fflush(stdout);
    std::fflush(stderr);
    return {exitCode, testing::internal::GetCapturedStdout(), testing::internal::GetCapturedStderr()};
}
