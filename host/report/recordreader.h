#pragma once

#include "host/report/recordinfo.h"
#include "host/report/textform.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

class QIODevice;
class QXmlStreamReader;

namespace REPORTGENERATOR {

/// Fills a record from the start tags, texts and end tags of a document, whoever reads the document. Elements
/// and attributes that the record does not know are passed over, with all that is in them.
class RecordReader {
public:
    /// Name and value of an attribute.
    using Attribute = std::pair<std::string_view, std::string_view>;
    /// Throws the error for the current place in the document; never returns.
    using Fail = std::function<void(const QString& reason)>;

    /// The root belongs to the caller. Items of the root's own list go to `items` instead, if given.
    RecordReader(IRGObject& root, IObjectList* items, Fail fail);

    void Start(std::string_view name);
    /// Follows Start() for each attribute of the element.
    void TakeAttribute(std::string_view name, std::string_view value);
    void Text(std::string_view text);
    void End();

private:
    struct Frame {
        IRGObject* object = nullptr;
        const MemberInfo* text = nullptr; ///< the scalar that the element's text is, or null
        IObjectList* list = nullptr;      ///< the list that the object stands in, or null
    };

    void CheckVersion(std::string_view text) const;
    void Assign(const Frame& frame, const MemberInfo& member, std::string_view text);

    IRGObject& m_root;
    IObjectList* const m_items;
    const Fail m_fail;
    std::vector<Frame> m_frames;
    std::string m_text;
    std::size_t m_skippedDepth = 0;
    TextCache m_cache;
};

/// Reads one document of the root's kind. Throws RGException "name:line: reason"; what was read before the
/// bad place is then in the root, or has gone through `items`.
void ReadDocument(QIODevice& device, const QString& name, IRGObject& root, IObjectList* items = nullptr,
                  bool heedEncoding = true);
void ReadDocument(QXmlStreamReader& reader, IRGObject& root);
/// The same for a file, which must be an ordinary one.
void ReadDocumentFile(const QString& fileName, IRGObject& root, IObjectList* items = nullptr);
/// Whether the file begins as a document of the root's kind and of a readable version; takes the root's
/// attributes. Never throws.
[[nodiscard]] bool HasRoot(const QString& fileName, IRGObject& root);

} // namespace REPORTGENERATOR
