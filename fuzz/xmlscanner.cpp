#include "tests/report/xmlshape.h"

#include <QBuffer>

#include <cstdio>
#include <cstdlib>

/// The scanner refuses what expat refuses, and reads the rest as expat does.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    const std::string disagreement = XmlDisagreement(ShapeByScanner(buffer), ShapeByExpat(bytes));
    if (!disagreement.empty()) {
        std::fprintf(stderr, "%s\n", disagreement.c_str());
        std::abort();
    }
    return 0;
}
