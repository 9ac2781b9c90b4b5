#pragma once

#include "host/report/recordinfo.h"

#include <string>
#include <vector>

namespace Interchange {

/// One number, text or time of a record, with the name that it has in JSON: that of the lists' own values.
struct RecordMember {
    /// What a list has in place of the record's type.
    enum class Form { Same, NumberOfText, MicrosecondsOfTime };

    QString name;
    std::string head; ///< `"name":`
    REPORTGENERATOR::MemberPtr at;
    Form form;
};

/// The members of a record and of the records in it.
class RecordMembers {
public:
    /// Points into the record, which is the caller's.
    explicit RecordMembers(REPORTGENERATOR::IRGObject& record);

    const std::vector<RecordMember>& All() const { return m_members; }
    const REPORTGENERATOR::IRGObject* Record() const { return m_record; }
    /// Appends the members that are set as those of a JSON object, without its braces.
    void AppendJson(std::string& out) const;

private:
    void add(REPORTGENERATOR::IRGObject& record);

    const REPORTGENERATOR::IRGObject* m_record;
    std::vector<RecordMember> m_members;
};

} // namespace Interchange
