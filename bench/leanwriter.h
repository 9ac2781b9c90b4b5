#pragma once

#include "bench/figures.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <string>
#include <string_view>

/// The leanest way to make a text: into one buffer, numbers by `std::to_chars`. Baseline of the writers: it
/// looks for nothing to be escaped or left out. For a file the buffer is written and used again whenever it
/// is full, since a new page of memory costs more than the bytes that go into it.
template <typename Char>
class LeanWriter {
public:
    using Text = std::basic_string_view<Char>;

    LeanWriter() = default;
    explicit LeanWriter(const QString& path) : m_file(path) {
        m_file.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
        m_buffer.reserve(2 * BufferSize);
    }
    LeanWriter& operator<<(Text text) {
        m_buffer += text;
        return *this;
    }
    LeanWriter& operator<<(Char c) {
        m_buffer += c;
        return *this;
    }
    LeanWriter& Whole(qint64 number) {
        char digits[24];
        return ascii(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
    }
    LeanWriter& Shortest(double number) {
        char digits[32];
        return ascii(digits,
                     std::to_chars(digits, digits + sizeof digits, number, std::chars_format::fixed).ptr);
    }
    LeanWriter& Fixed(double number, int decimals) {
        char digits[64];
        return ascii(
            digits,
            std::to_chars(digits, digits + sizeof digits, number, std::chars_format::fixed, decimals).ptr);
    }
    /// "2023-11-14T22:13:20Z" of microseconds.
    LeanWriter& Time(double microseconds) {
        using namespace std::chrono;
        const sys_seconds time{std::chrono::seconds(static_cast<qint64>(microseconds) / 1000000)};
        const year_month_day day{floor<days>(time)};
        const hh_mm_ss clock{time - floor<days>(time)};
        char text[] = "0000-00-00T00:00:00Z";
        putTwo(text, int(day.year()) / 100);
        putTwo(text + 2, int(day.year()) % 100);
        putTwo(text + 5, static_cast<int>(unsigned(day.month())));
        putTwo(text + 8, static_cast<int>(unsigned(day.day())));
        putTwo(text + 11, static_cast<int>(clock.hours().count()));
        putTwo(text + 14, static_cast<int>(clock.minutes().count()));
        putTwo(text + 17, static_cast<int>(clock.seconds().count()));
        return ascii(text, text + sizeof text - 1);
    }
    /// The text that goes into no file.
    Text GetText() const { return m_buffer; }
    void EndEntry() {
        if (m_buffer.size() >= BufferSize)
            Flush();
    }
    void Flush() {
        m_file.write(reinterpret_cast<const char*>(m_buffer.data()),
                     static_cast<qint64>(m_buffer.size() * sizeof(Char)));
        m_buffer.clear();
    }

private:
    static void putTwo(char* at, int number) {
        at[0] = static_cast<char>('0' + number / 10);
        at[1] = static_cast<char>('0' + number % 10);
    }
    LeanWriter& ascii(const char* from, const char* to) {
        const auto count = static_cast<size_t>(to - from);
        Char chars[64];
        std::copy(from, to, chars);
        m_buffer.append(chars, count);
        return *this;
    }

    static constexpr size_t BufferSize = 64 * 1024;

    QFile m_file;
    std::basic_string<Char> m_buffer;
};

/// Writes a file of that name by a lean writer and by ours, in turn. Both make a new file: one that is there
/// is compared with what would take its place. Their bytes must be the same.
inline void reportWriter(benchmark::State& state, const char* name, double goal,
                         const std::function<void(const QString& path)>& lean,
                         const std::function<void(const QString& path)>& ours) {
    const QTemporaryDir folder;
    const QString leanPath = folder.filePath(QStringLiteral("lean"));
    const QString path = folder.filePath(QString::fromLatin1(name));
    for (auto _ : state) {
        reportInTurn(
            state, "std::to_chars and write", goal,
            [&] {
                QFile::remove(leanPath);
                return processorSecondsOf([&] { lean(leanPath); });
            },
            [&] {
                QFile::remove(path);
                return processorSecondsOf([&] { ours(path); });
            });
    }
    QFile written(path);
    QFile expected(leanPath);
    const bool areThere = written.open(QIODevice::ReadOnly) && expected.open(QIODevice::ReadOnly);
    if (!areThere || written.readAll() != expected.readAll())
        state.SkipWithError("the bytes differ");
}
