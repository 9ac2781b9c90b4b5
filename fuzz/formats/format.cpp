#include "interchange/format.h"

#include "host/base/problems.h"
#include "interchange/reading.h"

#include <QBuffer>

#include <cstdlib>

// One fuzzer for each format that is read: FORMAT_ID is its id, FORMAT_COUNT the number of the fuzzers.

using namespace Interchange;

namespace {

using Entries = std::vector<FreqStoreXml::FrequencyStoreEntry>;

const Format& format() {
    static const Format& ours = *FormatOfId(QStringLiteral(FORMAT_ID));
    return ours;
}

/// The entries of a file, and how many of its records were refused; throws as the reader does.
std::pair<Entries, qint64> read(QByteArray bytes) {
    Entries entries;
    QBuffer device(&bytes);
    device.open(QIODevice::ReadOnly);
    ReadOptions options;
    options.keepExtras = true;
    const Account account =
        Read(format(), device, QStringLiteral("fuzz"), options,
             [&](const FreqStoreXml::FrequencyStoreEntry& entry) { entries.push_back(entry); });
    if (account.entries != static_cast<qint64>(entries.size()))
        std::abort();
    return {entries, account.refused};
}

Content contentOf(const Entries& entries) {
    return {.entries = [&](const auto& visit) {
        for (const FreqStoreXml::FrequencyStoreEntry& entry : entries)
            visit(entry);
    }};
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    Problems::SetSink([](const Problem&) {});
    qint64 count = 0;
    for (const Format* each : Formats())
        count += each->read ? 1 : 0;
    if (count != FORMAT_COUNT)
        std::abort(); // a format has no fuzzer
    return 0;
}

/// What the reader accepts is written without anything that it would refuse. What a format has no word for
/// may change by that once, and then no more.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    (void)FormatOfText(QString::fromUtf8(bytes));
    Entries entries;
    try {
        entries = read(bytes).first;
    } catch (const RGException&) {
        return 0;
    }
    if (!format().makeEncoder)
        return 0;
    std::string before;
    for (int round = 0; round < 3; ++round) {
        Account lost;
        const std::string written = ToBytes(format(), contentOf(entries), &lost);
        const auto [again, refused] = read(QByteArray::fromStdString(written));
        const bool isChanged = round == 2 && written != before;
        if (refused != 0 || static_cast<qint64>(again.size()) != lost.entries || isChanged)
            std::abort();
        entries = again;
        before = written;
    }
    return 0;
}
