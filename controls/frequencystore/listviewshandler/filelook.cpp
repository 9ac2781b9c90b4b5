#include "controls/frequencystore/listviewshandler/filelook.h"

#include "controls/frequencystore/listviewshandler/filekind.h"
#include "controls/frequencystore/listviewshandler/linefields.h"
#include "host/freqstorexml/filehandling.h"
#include "host/freqstorexml/liststreams.h"

#include <QXmlStreamReader>

namespace {

using FreqStoreXml::FrequencyStoreEntry;

/// Keeps what a reader tells to itself.
class Silence {
public:
    Silence() : m_before(Problems::SetSink([this](const Problem& problem) { note(problem); })) {}
    ~Silence() { Problems::SetSink(m_before); }
    qint64 firstLine = 0;

private:
    void note(const Problem& problem) {
        if (firstLine == 0)
            firstLine = problem.line;
    }
    Problems::Sink m_before;
};

void lookAtLines(QFile& file, const LineLayout& layout, FileLook& look) {
    Silence silence;
    LineReader reader(file, file.fileName());
    if (const std::optional<Problem> refusal = reader.RefuseContent()) {
        look.refusal = refusal->reason;
        look.firstProblemLine = refusal->line;
        return;
    }
    LineFields fields(reader, layout);
    QStringView line;
    while (reader.Next(line)) {
        if (line.size() < 2)
            continue;
        fields.Take(line);
        ++look.rows;
        look.frequencies += fields.frequency > 0 ? 1 : 0;
    }
    look.firstProblemLine = silence.firstLine;
}

void lookAtProfiles(QFile& file, FileLook& look) {
    QXmlStreamReader reader(&file);
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement() && reader.name() == QLatin1String("PROFILEPARAMETERSETTBL"))
            ++look.rows;
        if (reader.isStartElement() && reader.name() == QLatin1String("NOMINALFREQUENCY"))
            ++look.frequencies;
    }
    if (reader.hasError())
        look.refusal = reader.errorString();
    else if (look.rows == 0)
        look.refusal = QStringLiteral("is neither a frequency-store list nor a profile table");
    look.firstProblemLine = reader.hasError() ? reader.lineNumber() : 0;
}

void lookAtEntries(const QString& path, bool csv, FileLook& look) {
    const FreqStoreXml::EntryCallback count = [&look](FrequencyStoreEntry& entry) {
        ++look.rows;
        look.frequencies += entry.GetFFM_Settings().GetFrequency().GetValue() > 0 ? 1 : 0;
    };
    try {
        if (csv)
            FreqStoreXml::ReadCsv(path, FreqStoreXml::FrequencyStoreListHelper::Targets, count);
        else
            FreqStoreXml::ReadXml(path, count);
    } catch (const RGException& exception) {
        look.refusal = exception.GetErrorText();
        look.refusal.remove(path + QLatin1Char(':'));
        look.refusal = look.refusal.trimmed();
    }
}

} // namespace

FileLook LookAtFile(const QString& path) {
    FileLook look;
    QFile file(path);
    look.refusal = RefuseToOpen(file);
    if (!look.refusal.isEmpty())
        return look;
    if (PathContains(path, ".sfl") || PathContains(path, ".ltl") || PathContains(path, ".noi")) {
        look.kind = QStringLiteral("lines of text");
        lookAtLines(file, SflLayout, look); // all of these begin with the frequency
    } else if (path.endsWith(QLatin1String(".pij"))) {
        look.kind = QStringLiteral("a job");
    } else if (PathContains(path, ".csv")) {
        look.kind = QStringLiteral("comma-separated values");
        lookAtEntries(path, true, look);
    } else if (PathContains(path, ".xml") && FreqStoreXml::FileHandling().IsValidFormat(path)) {
        look.kind = QStringLiteral("frequency-store XML");
        lookAtEntries(path, false, look);
    } else if (PathContains(path, ".xml")) {
        look.kind = QStringLiteral("a profile table");
        lookAtProfiles(file, look);
    } else {
        look.refusal = QStringLiteral("is of no known kind of file");
    }
    return look;
}
