#include "host/valuetree/names.h"

#include <QHash>

#include <deque>

namespace Names {
namespace {

struct Table {
    std::deque<QString> texts{QString()};
    QHash<QStringView, Id> ids{{QStringView(), 0}}; // views into `texts`, whose elements never move
};

Table& table() {
    static Table* const instance = new Table;
    return *instance;
}

} // namespace

Id Intern(const QString& name) {
    Table& t = table();
    const auto found = t.ids.constFind(QStringView(name));
    if (found != t.ids.constEnd())
        return *found;
    const Id id = static_cast<Id>(t.texts.size());
    t.texts.push_back(name);
    t.ids.insert(QStringView(t.texts.back()), id);
    return id;
}

Id Find(QStringView name) {
    return table().ids.value(name, Unknown);
}

const QString& Text(Id id) {
    return table().texts[id];
}

} // namespace Names
