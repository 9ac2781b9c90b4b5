#include "host/report/xmltext.h"

#include "host/report/irgobject.h"
#include "host/report/textform.h"

#include <utility>

namespace REPORTGENERATOR {

namespace {

void AppendElement(std::string& out, std::string_view name, const IRGObject& object, std::size_t depth);

/// Members of an object that is only read; the table's functions serve reading and writing alike.
MemberPtr At(const MemberInfo& member, const IRGObject& object) {
    return member.at(const_cast<IRGObject&>(object));
}

void AppendAttributes(std::string& out, const IRGObject& object) {
    for (const MemberInfo& member : object.GetRecordInfo().members) {
        const MemberPtr value = At(member, object);
        if (member.placement != Placement::Attribute || !IsSet(value))
            continue;
        out += ' ';
        out += member.name;
        out += "=\"";
        AppendMember(out, value, XmlAttributeEscapes);
        out += '"';
    }
}

void AppendScalar(std::string& out, std::string_view name, const MemberPtr& value, std::size_t depth) {
    out.append(depth, ' ');
    out += '<';
    out += name;
    out += '>';
    AppendMember(out, value, XmlTextEscapes);
    out += "</";
    out += name;
    out += ">\n";
}

/// The elements of an object, without those of its lists; says whether there were any.
bool AppendElements(std::string& out, const IRGObject& object, std::size_t depth) {
    bool any = false;
    for (const MemberInfo& member : object.GetRecordInfo().members) {
        const MemberPtr value = At(member, object);
        if (member.placement != Placement::Element || std::holds_alternative<IObjectList*>(value) ||
            !IsSet(value))
            continue;
        if (!std::exchange(any, true))
            out += ">\n";
        if (auto* const* part = std::get_if<IRGObject*>(&value))
            AppendElement(out, member.name, **part, depth);
        else
            AppendScalar(out, member.name, value, depth);
    }
    return any;
}

void AppendElement(std::string& out, std::string_view name, const IRGObject& object, std::size_t depth) {
    if (const MemberInfo* content = object.GetRecordInfo().Content()) {
        const MemberPtr value = At(*content, object);
        if (IsSet(value))
            return AppendScalar(out, name, value, depth);
    }
    out.append(depth, ' ');
    out += '<';
    out += name;
    AppendAttributes(out, object);
    if (!AppendElements(out, object, depth + 1)) {
        out += "/>\n";
        return;
    }
    out.append(depth, ' ');
    out += "</";
    out += name;
    out += ">\n";
}

} // namespace

void AppendDocumentHead(std::string& out, const IRGObject& root) {
    out += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<";
    out += root.GetRecordInfo().name;
    out += " Version=\"" + std::to_string(IRGObject::GetVersion()) + '"';
    AppendAttributes(out, root);
    if (!AppendElements(out, root, 1))
        out += ">\n";
}

void AppendDocumentItem(std::string& out, const IRGObject& item) {
    AppendElement(out, item.GetRecordInfo().name, item, 1);
}

void AppendDocumentTail(std::string& out, const IRGObject& root) {
    out += "</";
    out += root.GetRecordInfo().name;
    out += ">\n";
}

void AppendDocument(std::string& out, const IRGObject& root) {
    if (!root.GetRecordInfo().isDocument) {
        out += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
        AppendElement(out, root.GetRecordInfo().name, root, 0);
        return;
    }
    AppendDocumentHead(out, root);
    for (const MemberInfo& member : root.GetRecordInfo().members) {
        const MemberPtr value = At(member, root);
        if (auto* const* list = std::get_if<IObjectList*>(&value))
            for (qsizetype i = 0; i < (*list)->Size(); ++i)
                AppendDocumentItem(out, (*list)->At(i));
    }
    AppendDocumentTail(out, root);
}

} // namespace REPORTGENERATOR
