#pragma once

#include "host/valuetree/node.h"

#include <QHash>

/// What leaves of the tree do without: sub-nodes, the index of many values, remembered paths. Private to the
/// node's own files.
struct Node::Rare {
    std::vector<Node*> children;            ///< in order of attachment; null where one was removed
    size_t holes = 0;                       ///< nulls in `children`
    quint32 lastSerial = 0;                 ///< how many children have ever been attached
    int removing = 0;                       ///< removals under way, during which places stay as they are
    QHash<Names::Id, quint32> ordinals;     ///< last ordinal given per name
    QHash<quint64, Node*> byNameAndOrdinal; ///< filled when a child is first looked up
    bool indexed = false;
    QHash<Names::Id, ValueBase*> valueIndex; ///< filled when the node has many values
    QString completePath;
    ITreeItem* deleteObserver = nullptr;
    std::unique_ptr<ValueDescriptor> descriptor;

    static quint64 key(Names::Id name, quint32 ordinal) { return quint64(name) << 32 | ordinal; }

    quint32 nextOrdinal(Names::Id name) { return ++ordinals[name]; }
    void remember(Node* child, Names::Id name, quint32 ordinal) {
        if (indexed)
            byNameAndOrdinal.insert(key(name, ordinal), child);
    }
    void forget(Node*, Names::Id name, quint32 ordinal) {
        if (indexed)
            byNameAndOrdinal.remove(key(name, ordinal));
    }
    Node* find(Names::Id name, quint32 ordinal);
    /// Closing holes touches every child, so it waits until half of the places are empty.
    void closeHolesIfMany();
};
