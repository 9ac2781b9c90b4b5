#include "controls/frequencystore/files/generallistparser.h"

#include "controls/frequencystore/files/linefields.h"
#include "host/base/fixedplace.h"
#include "host/base/longwork.h"
#include "host/freqstorexml/stagedentries.h"
#include "host/report/filestamps.h"

namespace {

constexpr char TraceSource[] = "listviewshandler";

/// Takes the lines of a file apart, a block at a time. Lines of fewer than two characters are passed over.
class BlockMaker {
public:
    BlockMaker(LineReader& reader, const LineLayout& layout) : m_reader(reader), m_fields(reader, layout) {}

    /// Empty at the end of the file.
    LineBlock Next() {
        LineBlock block;
        QStringView line;
        while (!block.IsFull() && m_reader.Next(line)) {
            if (line.size() < 2)
                continue;
            m_fields.Take();
            m_reader.CheckFrequency(m_fields.frequency);
            block.Add(m_fields);
        }
        return block;
    }

private:
    LineReader& m_reader;
    LineFields m_fields;
};

} // namespace

bool GeneralListParser::ReadLines(const QString& path, const LineLayout& layout, bool* sound) {
    FileStamps::Reading reading(path);
    QFile file(path);
    if (const QString refusal = RefuseToOpen(file); !refusal.isEmpty())
        return TellRefusal(FixedPlace::CannotOpenList, {path, 0, refusal});
    std::optional<LineReader> reader;
    LongWork::Elsewhere([&] { reader.emplace(file, path); });
    if (const std::optional<Problem> refusal = reader->RefuseContent()) {
        Problems::Report(TraceSource, *refusal);
        return false;
    }
    Prepare4NewFile();
    BlockMaker maker(*reader, layout);
    LongWork::Ahead([&]() -> LongWork::Take {
        LineBlock block = maker.Next();
        if (block.IsEmpty())
            return {};
        return [this, lines = std::move(block), done = file.pos(), size = file.size()] {
            lines.ForEach([this](const LineRecord& line) { FillInLine(line); });
            LongWork::Step(done, size);
        };
    });
    const bool isUnchanged = reading.Finish();
    if (sound)
        *sound = isUnchanged && reader->IsSound();
    ResetDataAfterNewFile();
    return true;
}

bool GeneralListParser::TakeEntries(const QString& path,
                                    const std::function<void(const FreqStoreXml::EntryCallback&)>& read) {
    FreqStoreXml::StagedEntries entries;
    try {
        entries.Read(path, read);
    } catch (const RGException& exception) {
        Problems::Report(TraceSource, Problem::FromText(exception.GetErrorText()));
        return false;
    }
    Prepare4NewFile();
    entries.Drain([this](const FreqStoreXml::FrequencyStoreEntry& entry) { FillInEntry(entry); });
    ResetDataAfterNewFile();
    return true;
}

void GeneralListParser::FillInLine(const LineRecord& line) {
    FillInData(line.frequency, line.bandwidth, line.comment.toString(), line.demodulation.toString(),
               line.priority, line.threatClass.toString(), QString(), QString(), QString(), QString());
}

void GeneralListParser::FillInEntry(const FreqStoreXml::FrequencyStoreEntry& entry) {
    const auto orUndefined = [](const QString& text) {
        return text.isEmpty() ? QStringLiteral("undefined") : text;
    };
    const FreqStoreXml::FFM_Settings& settings = entry.GetFFM_Settings();
    const FreqStoreXml::Profile_Data& profile = entry.GetProfile_Data();
    FillInData(settings.GetFrequency().GetValue(), settings.GetIFBandwidth().GetValue(), entry.GetComment(),
               FreqStoreXml::FFM_Settings::AnalogDemodToName(settings.GetAnalogDemod()),
               profile.GetPriority().toInt(), profile.GetThreatClass(), orUndefined(profile.GetProfileID()),
               orUndefined(profile.GetProfileName()), orUndefined(profile.GetSignalClass()),
               orUndefined(profile.GetTransmissionSystem()));
}
