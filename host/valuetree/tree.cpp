#include "host/valuetree/tree.h"

#include "host/base/fixedplace.h"

Tree::Tree() : m_root(new Node(nullptr, QString())) {}

Tree* Tree::Instance() {
    static Tree* const tree = new Tree;
    return tree;
}

bool Tree::AddValue(const QString& parentPath, ValueBase* value) {
    Node* parent = GetNode(parentPath);
    return parent && value && parent->AddValue(value->NameId(), value);
}

Node* Tree::MakeNode(const QString& path) {
    m_root->AddNode(path);
    return GetNode(path);
}

namespace Detail {

void ParkRefusedValue(ValueBase* value, const QString& path) {
    static auto* const parked = new std::vector<ValueBase*>;
    parked->push_back(value);
    TraceLazily(FixedPlace::ValueRefused, [&path] {
        return QStringLiteral(
                   "!!!!!!!MEMORY LEAK! The value with the path '%1' could not be created!!! A value of "
                   "this name already exists for a different type!!!!!!!!")
            .arg(path);
    });
}

} // namespace Detail
