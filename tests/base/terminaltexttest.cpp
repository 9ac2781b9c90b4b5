#include "host/base/terminaltext.h"

#include <gtest/gtest.h>

namespace {

TEST(TerminalText, ControlsAndMarksOfDirectionBecomeVisible) {
    const std::pair<QString, const char*> rows[] = {
        {QStringLiteral("a\tЖ \U0001F4E1"), "a\tЖ \U0001F4E1"},
        {QStringLiteral("\u001b[2J\n\u0007"), "\\u001b[2J\\u000a\\u0007"},
        {QStringLiteral("\u007f\u0080\u009f\u00a0"), "\\u007f\\u0080\\u009f\u00a0"},
        {QStringLiteral("\u200d\u200e\u200f\u2010"), "\u200d\\u200e\\u200f\u2010"},
        {QStringLiteral("\u202a\u202e\u202f\u2066\u2069\u206a"), "\\u202a\\u202e\u202f\\u2066\\u2069\u206a"},
        {QString(QChar(u'\0')), "\\u0000"},
    };
    for (const auto& [text, visible] : rows)
        EXPECT_EQ(VisibleText(text).toStdString(), visible);
}

TEST(TerminalText, WhatIsNoTerminalGetsTheBytes) {
    FILE* const file = std::tmpfile();
    ASSERT_TRUE(file);
    EXPECT_EQ(TextFor(file, QStringLiteral("ü\u202e\u001b")), QByteArray("ü\u202e\u001b"));
    std::fclose(file);
}

TEST(TerminalText, ArgumentsThatAreNotUtf8AreRefused) {
    const char* const good[] = {"program\xff", "--list", "caf\xc3\xa9.ltl"};
    EXPECT_TRUE(RefuseArguments(3, good).isEmpty());
    const char* const bad[] = {"program", "a", "caf\xe9\n.ltl"};
    EXPECT_EQ(RefuseArguments(3, bad), QStringLiteral("\"caf\\xe9\\x0a.ltl\" is not UTF-8"));
}

} // namespace
