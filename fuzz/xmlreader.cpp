#include "host/freqstorexml/detectionresultlist.h"
#include "host/freqstorexml/liststreams.h"

#include <QBuffer>

#include <cstdlib>

using namespace FreqStoreXml;

/// What the reader accepts must come back the same from its own written form, in XML and as a binary.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    FrequencyStoreList list;
    try {
        ReadXml(buffer, QStringLiteral("fuzz"),
                [&](const FrequencyStoreEntry& entry) { list.AppendFrequencyStoreEntry(entry); });
        const QString text = list.GetXmlString();
        FrequencyStoreList again;
        if (!again.SetXmlString(text) || again.GetXmlString() != text)
            std::abort();
        if (!again.SetCompressedBinary(list.GetCompressedBinary()) || again.GetXmlString() != text)
            std::abort();
    } catch (const RGException&) {
    }
    DetectionResultList results;
    (void)results.SetXmlString(QString::fromUtf8(bytes));
    (void)results.SetBinary(bytes);
    (void)results.SetCompressedBinary(bytes);
    return 0;
}
