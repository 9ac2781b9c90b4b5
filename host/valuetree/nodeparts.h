#pragma once

#include "host/valuetree/node.h"

#include <QHash>

#include <vector>

/// What a value has beside it that is no part of its node's shape, or was renamed, or needs extras.
struct ValueBase::Head {
    Node* parent = nullptr;
    ValueBase* next = nullptr; ///< next value of the same node, in order of attachment
    Extras* extras = nullptr;  ///< owned by the value
    Names::Id name = 0;
    NumberLimits::Id limits = 0;

    /// Heads of values that do not lie on the heap by themselves stand in a table.
    static Head* Beside(const ValueBase* value);
    static Head& MakeBeside(const ValueBase* value);
    static void Drop(const ValueBase* value);
};

/// What entries made from a shape do without. Private to the node's own files, as is all in this header.
struct Node::Side {
    ValueBase* firstValue = nullptr; ///< those that are no part of a shape
    ValueBase* lastValue = nullptr;
    quint32 removedValues = 0;
    quint32 slot = 0; ///< of those who hold the node weakly
    std::unique_ptr<Rare> rare;
};

/// What leaves of the tree do without: sub-nodes, the index of many values, remembered paths.
struct Node::Rare {
    std::vector<Node*> children;           ///< in order of attachment; null where one was removed
    size_t holes = 0;                      ///< nulls in `children`
    quint32 lastSerial = 0;                ///< how many children have ever been attached
    quint32 serialsBefore = 0;             ///< how many of them stood in front of the first place
    std::vector<quint32> serials;          ///< by place, once places were closed; else they count on
    quint32 restores = 0;                  ///< how often children came back to their old places
    int removing = 0;                      ///< removals under way, during which places stay as they are
    QHash<Names::Id, quint32> ordinals;    ///< last ordinal given per name, but that of the recent name
    Names::Id recentName = Names::Unknown; ///< the children of a list mostly have one name
    quint32 recentOrdinal = 0;
    QHash<quint64, Node*> byNameAndOrdinal; ///< filled when a child is first looked up
    bool indexed = false;
    QHash<Names::Id, ValueBase*> valueIndex; ///< filled when the node has many values
    QString completePath;
    ITreeItem* deleteObserver = nullptr;
    std::unique_ptr<ValueDescriptor> descriptor;

    static quint64 key(Names::Id name, quint32 ordinal) { return quint64(name) << 32 | ordinal; }

    quint32 nextOrdinal(Names::Id name) {
        if (name != recentName) {
            if (recentName != Names::Unknown)
                ordinals[recentName] = recentOrdinal;
            recentName = name;
            recentOrdinal = ordinals.value(name);
        }
        return ++recentOrdinal;
    }
    bool hasOrdinal(Names::Id name) const { return name == recentName || ordinals.contains(name); }
    void remember(Node* child, Names::Id name, quint32 ordinal) {
        if (indexed)
            byNameAndOrdinal.insert(key(name, ordinal), child);
    }
    void forget(Node*, Names::Id name, quint32 ordinal) {
        if (indexed)
            byNameAndOrdinal.remove(key(name, ordinal));
    }
    Node* find(Names::Id name, quint32 ordinal);
    void append(Node* child);
    quint32 serialAt(size_t place) const {
        return serials.empty() ? serialsBefore + static_cast<quint32>(place) + 1 : serials[place];
    }
    /// Closing holes touches every child, so it waits until half of the places are empty.
    void closeHolesIfMany();
};
