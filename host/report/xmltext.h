#pragma once

#include "host/report/recordinfo.h"

#include <string>

namespace REPORTGENERATOR {

// Records as UTF-8 XML text, appended to a buffer of the caller's. A document is its head, its items, its
// tail; writers of long lists write the items one by one and empty the buffer in between.

/// XML declaration, start tag and all members of the root but its lists.
void AppendDocumentHead(std::string& out, const IRGObject& root);
void AppendDocumentItem(std::string& out, const IRGObject& item);
void AppendDocumentTail(std::string& out, const IRGObject& root);
void AppendDocument(std::string& out, const IRGObject& root);

} // namespace REPORTGENERATOR
