#pragma once

#include <QFile>

#include <algorithm>
#include <charconv>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// The leanest program for the same bytes: fields by pointer, numbers by `std::from_chars`, words interned,
/// comments as strings, one record after the other in a vector.
class LeanParse {
public:
    struct Record {
        double frequency, bandwidth;
        std::u16string comment;
        int demodulation, threatClass, priority;
    };

    explicit LeanParse(const QString& path) {
        QFile file(path);
        file.open(QIODevice::ReadOnly);
        std::vector<char16_t> text(static_cast<size_t>(file.size()) / 2);
        file.read(reinterpret_cast<char*>(text.data()), file.size());
        const char16_t* const end = text.data() + text.size();
        for (const char16_t* line = text.data() + 1; line < end;) { // behind the byte-order mark
            const char16_t* const lineEnd = std::find(line, end, u'\n');
            take(line, lineEnd);
            line = lineEnd + 1;
        }
    }
    const std::vector<Record>& Records() const { return m_records; }
    /// A demodulation or threat class.
    const std::u16string& Word(int number) const {
        return std::find_if(m_words.begin(), m_words.end(),
                            [number](const auto& word) { return word.second == number; })
            ->first;
    }

private:
    using Text = std::u16string_view;
    static constexpr int Fields = 7;

    void take(const char16_t* at, const char16_t* end) {
        Text fields[Fields];
        int count = 0;
        while (count < Fields && at < end) {
            const char16_t* const tab = std::find(at, end, u'\t');
            fields[count++] = Text(at, static_cast<size_t>(tab - at));
            at = tab + 1;
        }
        if (count == Fields)
            m_records.push_back({number(fields[0]), number(fields[1]), std::u16string(fields[2]),
                                 word(fields[3]), word(fields[5]), static_cast<int>(number(fields[6]))});
    }
    static double number(Text text) {
        char ascii[64];
        char* end = ascii;
        for (const char16_t c : text.substr(0, sizeof ascii))
            *end++ = static_cast<char>(c);
        double value = 0;
        std::from_chars(ascii, end, value);
        return value;
    }
    int word(Text text) {
        return m_words.try_emplace(std::u16string(text), static_cast<int>(m_words.size())).first->second;
    }

    std::vector<Record> m_records;
    std::unordered_map<std::u16string, int> m_words;
};
