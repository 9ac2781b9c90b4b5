#pragma once

#include "controls/frequencystore/files/linereader.h"

#include <array>
#include <functional>
#include <vector>

/// Number of a field in a line, from 0; -1 where the format has no such field.
struct LineLayout {
    int frequency;
    int bandwidth;
    int comment;
    int demodulation;
    int threatClass;
    int priority;
};

/// Lines of an ".sfl" file: frequency, comment, bandwidth, demodulation.
inline constexpr LineLayout SflLayout{0, 2, 1, 3, -1, -1};
/// Lines of an ".ltl" file; the fifth field is the type letter, which is derived.
inline constexpr LineLayout LtlLayout{0, 1, 2, 3, 5, 6};
/// Lines of a ".noi" file: frequency, comment, bandwidth.
inline constexpr LineLayout NoiLayout{0, 2, 1, -1, -1, -1};

/// What one line says. Texts are the reader's, and good while the record is handed on.
struct LineRecord {
    double frequency; ///< Hz
    double bandwidth; ///< Hz
    int priority;
    QStringView comment;
    QStringView demodulation;
    QStringView threatClass;
};

/// The fields of one line after the other. A short line keeps the previous line's values for what it lacks;
/// a number that cannot be read is 0, and is told.
class LineFields {
public:
    /// Both are kept by reference.
    LineFields(LineReader& reader, const LineLayout& layout) : m_reader(reader), m_layout(layout) {}

    /// Takes the line that the reader gave last.
    void Take();

    double frequency = 0; ///< Hz
    double bandwidth = 0; ///< Hz
    int priority = 1;
    QString comment;
    QString demodulation;
    QString threatClass = QStringLiteral("not classified");

private:
    /// What lies behind the last of these is dropped.
    static constexpr unsigned char MaxFields = 15;

    bool has(int field) const { return field >= 0 && field < m_count; }
    void number(int field, double& value, const char* what);
    void text(int field, QString& value);
    void complain(int field, const char* what);

    LineReader& m_reader;
    const LineLayout& m_layout;
    QStringView m_fields[MaxFields];
    int m_count = 0;
};

/// Some thousand lines with their texts, so that one thread can take lines apart and another one use them.
class LineBlock {
public:
    bool IsFull() const { return m_lines.size() == MostLines; }
    bool IsEmpty() const { return m_lines.empty(); }
    void Add(const LineFields& fields);
    /// Hands the lines on in their order.
    void ForEach(const std::function<void(const LineRecord&)>& take) const;

private:
    static constexpr size_t MostLines = 2048;

    struct Line {
        double frequency;
        double bandwidth;
        int priority;
        std::array<qsizetype, 3> ends; ///< of the texts; each begins where the one before ends
    };

    std::vector<Line> m_lines;
    std::u16string m_texts;
};
