#include "interchange/table.h"

#include "host/base/problems.h"
#include "interchange/reading.h"

#include <QBuffer>

#include <cstdlib>

using namespace Interchange;

/// A table of no known format: what is proposed for it is a choice by which it can be read.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const Problems::Sink before = Problems::SetSink([](const Problem&) {});
    QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    QBuffer device(&bytes);
    device.open(QIODevice::ReadOnly);
    try {
        const TableLook look = LookAtTable(device, QStringLiteral("fuzz"));
        TableChoice choice = look.choice;
        TakeTableOptions(look.proposal.ToText(look.headings), look, choice);
        if (!choice.WhyOpen(look.headings).isEmpty())
            return 0;
        device.seek(0);
        qint64 count = 0;
        const Account account = ReadTable(device, QStringLiteral("fuzz"), choice, {},
                                          [&](const FreqStoreXml::FrequencyStoreEntry&) { ++count; });
        if (account.entries != count)
            std::abort();
    } catch (const RGException&) {
    }
    return 0;
}
