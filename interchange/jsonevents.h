#pragma once

#include "host/report/textform.h"

#include <QString>

#include <functional>
#include <string_view>

class QIODevice;

namespace Interchange {

class Reading;

/// What a JSON text is made of, as it is read. A number comes as its text. Texts are UTF-8 and good during
/// the call only.
class JsonEvents {
public:
    enum class Scalar { Text, Number, True, False, Null };

    virtual ~JsonEvents() = default;
    virtual void Begin(bool isObject) = 0; ///< an object or an array
    virtual void End(bool isObject) = 0;
    virtual void Key(std::string_view key) = 0;
    virtual void Take(Scalar kind, std::string_view text) = 0;
    /// Whether another JSON text may stand behind one that has ended, as in JSON lines.
    virtual bool TakesMoreTexts() const { return false; }
    /// The line at which the reading is, from 1.
    void SetLine(std::function<qint64()> line) { m_line = std::move(line); }

protected:
    qint64 Line() const { return m_line(); }

private:
    std::function<qint64()> m_line;
};

/// Reads a JSON text of any size and encoding in bounded memory and hands on what it finds. Nesting beyond
/// 64, a piece larger than 16 MiB and what is no JSON throw RGException "file:line: reason"; what the events
/// throw passes through.
void ReadJsonEvents(QIODevice& device, Reading& reading, JsonEvents& events);

/// How the characters of a text are written in JSON.
extern const REPORTGENERATOR::EscapeTable JsonEscapes;
/// Appends a text in quotes.
void AppendJsonText(std::string& out, QStringView text);

} // namespace Interchange
