#include "controls/frequencystore/memory/jobfile.h"

#include "controls/frequencystore/files/carefulxmlreader.h"
#include "controls/frequencystore/files/linereader.h"
#include "host/base/longwork.h"
#include "host/base/trace.h"
#include "host/report/filestamps.h"
#include "host/report/outputfile.h"

#include <QCoreApplication>
#include <QFile>
#include <QStringDecoder>

#include <vector>

namespace {

constexpr char TraceSource[] = "memorysystemhandling";
constexpr qint64 MaxFileSize = 512 * 1024 * 1024;

/// Number of the line in which a text has its first character that stands for bad bytes.
qint64 lineOfBadBytes(const QByteArray& bytes) {
    qint64 line = 1;
    for (qsizetype begin = 0; begin < bytes.size(); ++line) {
        const qsizetype lineFeed = bytes.indexOf('\n', begin);
        const qsizetype end = lineFeed < 0 ? bytes.size() : lineFeed + 1;
        if (!QByteArrayView(bytes).sliced(begin, end - begin).isValidUtf8())
            return line;
        begin = end;
    }
    return line;
}

void declareUtf8(QString& text) {
    if (const QRegularExpressionMatch encoding = ForeignEncodingOf(text); encoding.hasMatch())
        text.replace(encoding.capturedStart(3), encoding.capturedLength(3), QStringLiteral("UTF-8"));
}

/// A replacement of a part of a text.
struct Edit {
    qsizetype begin;
    qsizetype end;
    QString with;
};

/// Applies edits that do not overlap, in any order.
void apply(QString& text, std::vector<Edit>& edits) {
    std::sort(edits.begin(), edits.end(), [](const Edit& a, const Edit& b) { return a.begin < b.begin; });
    QString result;
    qsizetype copied = 0;
    for (const Edit& edit : edits) {
        result += QStringView(text).mid(copied, edit.begin - copied);
        result += edit.with;
        copied = edit.end;
    }
    text = result += QStringView(text).mid(copied);
}

/// One place of a section in a job, in characters of its text.
struct Place {
    qsizetype begin = 0;  ///< of the section that is there
    qsizetype end = 0;    ///< behind it
    qsizetype tdsEnd = 0; ///< of the end tag of the element around it
};

/// Finds the places by walking through the job.
class PlaceFinder {
public:
    explicit PlaceFinder(const QString& job) : m_reader(job) {}

    bool Find(std::vector<Place>& places);
    const CarefulXmlReader& Reader() const { return m_reader; }

private:
    /// An open element. What it is depends on the one around it.
    struct Open {
        enum Kind { Other, SubJob, Tds, Section } kind = Other;
        bool hasChild = false; ///< the child that matters was met; later ones of its name do not count
        Place place;
    };

    void enter();
    void leave(std::vector<Place>& places);

    CarefulXmlReader m_reader;
    std::vector<Open> m_open{1};
    int m_insideSection = 0;
};

bool PlaceFinder::Find(std::vector<Place>& places) {
    while (m_reader.Next()) {
        if (m_reader.IsStart())
            enter();
        else if (m_reader.IsEnd())
            leave(places);
    }
    return m_reader.Refusal().isEmpty();
}

void PlaceFinder::enter() {
    Open& around = m_open.back();
    Open open;
    if (m_insideSection > 0)
        open.kind = Open::Other;
    else if (m_reader.Name() == QLatin1String("SUBJOB"))
        open.kind = Open::SubJob;
    else if (around.kind == Open::SubJob && m_reader.Name() == QLatin1String("TDS"))
        open.kind = std::exchange(around.hasChild, true) ? Open::Other : Open::Tds;
    else if (around.kind == Open::Tds && m_reader.Name() == QLatin1String("MEMORYSCAN"))
        open.kind = std::exchange(around.hasChild, true) ? Open::Other : Open::Section;
    if (open.kind == Open::Section) {
        around.place.begin = m_reader.Begin();
        ++m_insideSection;
    }
    m_open.push_back(open);
}

void PlaceFinder::leave(std::vector<Place>& places) {
    const Open open = m_open.back();
    m_open.pop_back();
    if (open.kind == Open::Section) {
        m_open.back().place.end = m_reader.End();
        --m_insideSection;
    } else if (open.kind == Open::Tds && open.hasChild) {
        places.push_back(open.place);
        places.back().tdsEnd = m_reader.Begin();
    }
}

bool isBlank(QChar c) {
    return c == QLatin1Char(' ') || c == QLatin1Char('\t') || c == QLatin1Char('\n') ||
           c == QLatin1Char('\r');
}

/// The line break and indentation before a position, empty when its line holds more than that.
QString breakBefore(const QString& text, qsizetype position) {
    qsizetype begin = position;
    while (begin > 0 && (text.at(begin - 1) == QLatin1Char(' ') || text.at(begin - 1) == QLatin1Char('\t')))
        --begin;
    if (begin == 0 || text.at(begin - 1) != QLatin1Char('\n'))
        return QString();
    --begin;
    if (begin > 0 && text.at(begin - 1) == QLatin1Char('\r'))
        --begin;
    return text.mid(begin, position - begin);
}

/// A section as it stands behind that line break: each of its own line breaks between tags is lengthened.
QString indented(const QString& section, const QString& lineBreak) {
    if (lineBreak.isEmpty())
        return section;
    QString result = lineBreak;
    result.reserve(section.size() + section.size() / 4);
    qsizetype copied = 0;
    for (qsizetype at = section.indexOf(QLatin1Char('\n')); at >= 0;
         at = section.indexOf(QLatin1Char('\n'), at + 1)) {
        if (at == 0 || section.at(at - 1) != QLatin1Char('>'))
            continue;
        result += QStringView(section).mid(copied, at - copied);
        result += lineBreak;
        copied = at + 1;
    }
    return result += QStringView(section).mid(copied);
}

/// The element "MEMORYSCAN" of a foreign section's document; a null text, told, when there is none.
QString elementOf(const QString& section) {
    CarefulXmlReader reader(section);
    qsizetype begin = -1;
    qsizetype end = -1;
    bool isSection = false;
    while (reader.Next()) {
        if (reader.IsStart() && reader.Depth() == 1) {
            begin = reader.Begin();
            isSection = reader.Name() == QLatin1String("MEMORYSCAN");
        } else if (reader.IsEnd() && reader.Depth() == 1) {
            end = reader.End();
        }
    }
    if (reader.Refusal().isEmpty() && isSection)
        return section.mid(begin, end - begin);
    const QString reason = isSection || !reader.Refusal().isEmpty()
                               ? reader.Refusal()
                               : QCoreApplication::translate("Readers", "is no MEMORYSCAN");
    Problems::Report(TraceSource, {QStringLiteral("job data"), reader.Line(), reason});
    return QString();
}

} // namespace

static std::optional<QString> readText(const QString& path) {
    FileStamps::Reading reading(path);
    QFile file(path);
    if (const QString refusal = RefuseToOpen(file, MaxFileSize); !refusal.isEmpty()) {
        Problems::Report(TraceSource, {path, 0, refusal});
        return std::nullopt;
    }
    const QByteArray bytes = file.readAll();
    reading.Finish();
    QStringDecoder decoder(QStringDecoder::Utf8);
    QString text = decoder.decode(bytes);
    if (decoder.hasError()) {
        Problems::Report(TraceSource,
                         {path, lineOfBadBytes(bytes),
                          QCoreApplication::translate("Readers", "is not well encoded UTF-8 text")});
        return std::nullopt;
    }
    if (text.endsWith(QLatin1Char('\n')))
        text.chop(1);
    declareUtf8(text);
    return text;
}

std::optional<QString> ReadJobText(const QString& path) {
    std::optional<QString> text;
    LongWork::Elsewhere([&] { text = readText(path); });
    return text;
}

QString WriteJobText(const QString& path, const QString& job) {
    try {
        REPORTGENERATOR::OutputFile file(path);
        REPORTGENERATOR::WriteBytes(file.Device(), path, (job + QLatin1Char('\n')).toStdString());
        file.Commit();
        return file.WrittenName();
    } catch (const RGException& exception) {
        TraceLazily(TraceSource, [&] { return exception.GetErrorText(); });
        return QString();
    }
}

int MergeSection(QString& job, const QString& section, bool isOurs, const QString& name) {
    if (job.isEmpty())
        return 0;
    if (job.startsWith(QChar(QChar::ByteOrderMark)))
        job.remove(0, 1); // readers do not count it
    std::vector<Place> places;
    if (PlaceFinder finder(job); !finder.Find(places)) {
        Problems::Report(TraceSource, {name, finder.Reader().Line(), finder.Reader().Refusal()});
        return -1;
    }
    if (places.empty())
        return 0;
    const QString element = isOurs ? section.trimmed() : elementOf(section);
    if (element.isEmpty())
        return -1;
    std::vector<Edit> edits;
    for (const Place& place : places) {
        const QString lineBreak = breakBefore(job, place.begin);
        qsizetype last = place.tdsEnd;
        while (isBlank(job.at(last - 1)))
            --last;
        const QString text = indented(element, lineBreak);
        if (last == place.end) {
            edits.push_back({place.begin - lineBreak.size(), place.end, text});
        } else {
            edits.push_back({place.begin - lineBreak.size(), place.end, QString()});
            edits.push_back({last, last, text});
        }
    }
    apply(job, edits);
    return static_cast<int>(places.size());
}
