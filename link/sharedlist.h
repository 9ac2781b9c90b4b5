#pragma once

#include "host/valuetree/node.h"

#include <QString>

/// What the link is told of a list, of which it knows nothing else.
struct SharedList {
    Node* node = nullptr;         ///< its children are the entries; not owned, outlives the link
    QString name;                 ///< as its topics have it
    QString entryName;            ///< of the entries' nodes
    const Shape* shape = nullptr; ///< of new entries; null for loose values
    /// Whether the values NODE_FileLoaded and NODE_FileName beside the node tell which file is loaded.
    bool hasFile = false;
};
