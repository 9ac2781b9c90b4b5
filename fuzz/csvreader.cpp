#include "host/freqstorexml/liststreams.h"

#include <QBuffer>

#include <cstdlib>

using namespace FreqStoreXml;

namespace {

using ListType = FrequencyStoreListHelper::ListType;

QVector<FrequencyStoreEntry> Read(const QByteArray& bytes, ListType type) {
    QVector<FrequencyStoreEntry> entries;
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    ReadCsv(buffer, QStringLiteral("fuzz"), type,
            [&](const FrequencyStoreEntry& entry) { entries.append(entry); });
    return entries;
}

QByteArray Write(const QVector<FrequencyStoreEntry>& entries, ListType type) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    FrequencyStoreListWriter writer(buffer, true, type);
    for (const FrequencyStoreEntry& entry : entries)
        writer.Append(entry);
    writer.Commit();
    return buffer.data();
}

} // namespace

/// What the reader accepts must come back the same from its own written form.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    for (const ListType type : {FrequencyStoreListHelper::XmlList, FrequencyStoreListHelper::Detections,
                                FrequencyStoreListHelper::Targets, FrequencyStoreListHelper::SearchResults}) {
        QVector<FrequencyStoreEntry> entries;
        try {
            entries = Read(bytes, type);
        } catch (const RGException&) {
            continue;
        }
        const QByteArray written = Write(entries, type);
        if (Write(Read(written, type), type) != written)
            std::abort();
    }
    return 0;
}
