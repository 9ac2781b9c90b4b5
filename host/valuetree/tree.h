#pragma once

#include "host/base/trace.h"
#include "host/valuetree/node.h"

/// The process-wide tree through which values and nodes are found by absolute path. Created on first use and
/// never destroyed: components may end in any order, also after it is no longer needed.
///
/// \code
/// Tree::Instance()->MakeNode(QStringLiteral("/Bookmarks"));
/// auto* count = GetOrCreateValue<Value<int>>(QStringLiteral("/Bookmarks/count"));
/// count->SetValue(3);
/// const auto* found = Tree::Instance()->Find<Value<int>>(QStringLiteral("/Bookmarks/count")); // count
/// \endcode
class Tree {
public:
    static Tree* Instance();

    Node* GetRoot() const { return m_root; }
    /// The value or node at an absolute path; null when absent.
    ValueBase* GetValue(const QString& path) const { return m_root->GetValue(path); }
    Node* GetNode(const QString& path) const { return m_root->GetNode(path); }
    /// The value at the path as type V; null when absent or of another type.
    template <typename V>
    V* Find(const QString& path) const {
        return value_cast<V>(GetValue(path));
    }
    /// Attaches a value under the node at `parentPath` and takes ownership; false, and the caller keeps it,
    /// when there is no such node or the node has a value of the value's name.
    [[nodiscard]] bool AddValue(const QString& parentPath, ValueBase* value);
    /// Creates the nodes that are missing on the path and returns the last one.
    Node* MakeNode(const QString& path);

private:
    Tree();

    Node* const m_root;
};

namespace Detail {

/// Keeps a value that the tree refuses, so that its user can go on using it, and traces its path.
void ParkRefusedValue(ValueBase* value, const QString& path);

} // namespace Detail

/// The value at an absolute path, made when it is absent. When the tree refuses it (a value of that name but
/// of another type is there, or the parent is missing) the caller gets a usable value outside the tree, which
/// is never destroyed; a trace tells so. `observer`, if any, is attached to the value.
template <typename V>
V* GetOrCreateValue(const QString& path, IObserver* observer = nullptr) {
    V* value = Tree::Instance()->Find<V>(path);
    if (!value) {
        value = new V;
        const qsizetype slash = path.lastIndexOf(QLatin1Char('/'));
        value->SetName(path.mid(slash + 1));
        if (!Tree::Instance()->AddValue(path.left(slash + 1), value))
            Detail::ParkRefusedValue(value, path);
    }
    if (observer)
        value->AddObserver(observer);
    return value;
}

/// The same for a value directly under a node; `inTree` is the node's `IsInTree()`, asked once per entry.
template <typename V>
V* GetOrCreateValue(Node& node, bool inTree, Names::Id name) {
    ValueBase* found = inTree ? node.FindOwnValue(name) : nullptr;
    if (V* value = value_cast<V>(found))
        return value;
    V* value = new V;
    if (!found && inTree && node.AddValue(name, value))
        return value;
    value->SetName(Names::Text(name));
    Detail::ParkRefusedValue(value, node.PathOfChild(Names::Text(name)));
    return value;
}
