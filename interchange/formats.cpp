#include "host/base/textdecoder.h"
#include "host/report/byteinput.h"
#include "host/report/outputfile.h"

#include <QBuffer>
#include <QFile>

#include <algorithm>
#include <iterator>

#include "interchange/format.h"
#include "interchange/formatlist.h"
#include "interchange/reading.h"

namespace Interchange {

namespace {

// The order matters: a file is the first format that knows it.
constexpr const Format* All[] = {&ChirpCsv,     &GqrxBookmarks, &GqrxBandPlan,   &KiwiCsv,
                                 &EibiSchedule, &ScannerCsv,    &AnnotationsCsv, &FldigiFrequencies,
                                 &KiwiJson,     &SdrPlusJson,   &SdrSharpXml};

template <typename Matches>
const Format* find(Matches matches) {
    const auto* const found =
        std::find_if(std::begin(All), std::end(All), [&](const Format* format) { return matches(*format); });
    return found == std::end(All) ? nullptr : *found;
}

constexpr std::size_t FlushAt = 1 << 16;

} // namespace

std::span<const Format* const> Formats() {
    return All;
}

const Format* FormatOfId(const QString& id) {
    return find([&](const Format& format) { return id == QLatin1String(format.id); });
}

const Format* FormatOfFile(const QString& path) {
    QFile file(path);
    try {
        REPORTGENERATOR::OpenForReading(file);
    } catch (const RGException&) {
        return nullptr; // whoever reads the file tells why
    }
    constexpr qint64 HeadBytes = 64 * 1024;
    QByteArray head = file.read(HeadBytes);
    QBuffer device(&head);
    device.open(QIODevice::ReadOnly);
    const TextForm form = LookAtText(device);
    return form.refusal.isEmpty() ? FormatOfText(form.head) : nullptr;
}

const Format* FormatOfText(const QString& head) {
    return find([&](const Format& format) { return format.knows(head); });
}

Account Read(const Format& format, const QString& path, const ReadOptions& options, const TakeEntry& take) {
    Account account;
    REPORTGENERATOR::ReadWhole(path, [&](QFile& file) { account = Read(format, file, path, options, take); });
    return account;
}

Account Read(const Format& format, QIODevice& device, const QString& name, const ReadOptions& options,
             const TakeEntry& take) {
    Reading reading(name, options, take);
    format.read(device, reading);
    return reading.GetAccount();
}

Account LookAtLosses(const Format& format, const VisitEntries& entries) {
    Account lost;
    const std::unique_ptr<Encoder> encoder = format.makeEncoder();
    std::string bytes;
    entries([&](const FreqStoreXml::FrequencyStoreEntry& entry) {
        encoder->Append(bytes, entry, lost);
        bytes.clear();
    });
    return lost;
}

Account Write(const Format& format, const QString& path, const VisitEntries& entries) {
    Account lost;
    const std::unique_ptr<Encoder> encoder = format.makeEncoder();
    REPORTGENERATOR::OutputFile file(path);
    std::string bytes;
    const auto flush = [&] {
        REPORTGENERATOR::WriteBytes(file.Device(), path, bytes);
        bytes.clear();
    };
    encoder->Begin(bytes);
    entries([&](const FreqStoreXml::FrequencyStoreEntry& entry) {
        encoder->Append(bytes, entry, lost);
        if (bytes.size() >= FlushAt)
            flush();
    });
    encoder->End(bytes);
    flush();
    file.Commit();
    return lost;
}

std::string ToBytes(const Format& format, const VisitEntries& entries) {
    Account lost;
    const std::unique_ptr<Encoder> encoder = format.makeEncoder();
    std::string bytes;
    encoder->Begin(bytes);
    entries([&](const FreqStoreXml::FrequencyStoreEntry& entry) { encoder->Append(bytes, entry, lost); });
    encoder->End(bytes);
    return bytes;
}

} // namespace Interchange
