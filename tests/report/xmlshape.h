#pragma once

#include "host/report/xmlscanner.h"

#include <QIODevice>

#include <expat.h>
#include <string>

/// A document in short: "<name a=v>", texts, "</>"; and why it was refused, if it was.
struct XmlShape {
    std::string text;
    std::string refusal;
};

inline XmlShape ShapeByScanner(QIODevice& device) {
    using REPORTGENERATOR::XmlScanner;
    XmlShape shape;
    try {
        XmlScanner scanner(device, QStringLiteral("f"));
        for (auto token = scanner.Next(); token != XmlScanner::Token::End; token = scanner.Next()) {
            if (token == XmlScanner::Token::Text) {
                shape.text += scanner.Text();
            } else if (token == XmlScanner::Token::EndElement) {
                shape.text += "</>";
            } else {
                shape.text.append("<").append(scanner.Name());
                for (const auto& attribute : scanner.Attributes())
                    shape.text.append(" ").append(attribute.name).append("=").append(attribute.value);
                shape.text += '>';
            }
        }
    } catch (const REPORTGENERATOR::RGException& exception) {
        shape.refusal = exception.GetErrorText().toStdString();
    }
    return shape;
}

/// The same by expat, which has met more bad documents than any other parser.
inline XmlShape ShapeByExpat(const QByteArray& bytes) {
    struct Handlers {
        static std::string& Text(void* shape) { return static_cast<XmlShape*>(shape)->text; }
        static void Start(void* shape, const char* name, const char** attributes) {
            Text(shape).append("<").append(name);
            for (; *attributes; attributes += 2)
                Text(shape).append(" ").append(attributes[0]).append("=").append(attributes[1]);
            Text(shape) += '>';
        }
        static void End(void* shape, const char*) { Text(shape) += "</>"; }
        static void Data(void* shape, const char* text, int size) {
            Text(shape).append(text, static_cast<std::size_t>(size));
        }
    };
    XmlShape shape;
    const XML_Parser parser = XML_ParserCreate("UTF-8");
    XML_SetUserData(parser, &shape);
    XML_SetElementHandler(parser, Handlers::Start, Handlers::End);
    XML_SetCharacterDataHandler(parser, Handlers::Data);
    if (XML_Parse(parser, bytes.constData(), static_cast<int>(bytes.size()), XML_TRUE) != XML_STATUS_OK) {
        const auto at = XML_GetCurrentByteIndex(parser);
        const bool isLetter = XML_GetErrorCode(parser) == XML_ERROR_INVALID_TOKEN && at < bytes.size() &&
                              (bytes.at(at) & 0x80) != 0;
        shape.refusal = isLetter ? "a letter" : XML_ErrorString(XML_GetErrorCode(parser));
    }
    XML_ParserFree(parser);
    return shape;
}

/// How the scanner's answer differs from expat's; empty when it does not, or is meant to: the scanner asks
/// not which of the letters beyond ASCII a name may have, and refuses what it gives as its reasons here.
inline std::string XmlDisagreement(const XmlShape& ours, const XmlShape& theirs) {
    if (ours.refusal.empty() && theirs.refusal.empty())
        return ours.text == theirs.text ? std::string()
                                        : ours.text + " is read as " + theirs.text + " by expat";
    if (ours.refusal.empty())
        return theirs.refusal == "a letter" ? std::string() : "expat refuses it: " + theirs.refusal;
    if (!theirs.refusal.empty())
        return {};
    for (const char* reason :
         {"document type declarations", "nested more than", "is not supported", "more than 64 attributes",
          "not UTF-8", "larger than 16 MiB", "a reference does not", "the XML declaration is malformed"})
        if (ours.refusal.find(reason) != std::string::npos)
            return {};
    return "expat accepts it, but " + ours.refusal;
}
