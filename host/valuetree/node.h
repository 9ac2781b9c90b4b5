#pragma once

#include "host/base/observer.h"
#include "host/valuetree/names.h"
#include "host/valuetree/shape.h"
#include "host/valuetree/value.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <span>
#include <string>
#include <vector>

class NodeKeeper;

/// An item of the tree: a node or a value.
class ITreeItem : public IDeleteSubject {
public:
    virtual Node* GetParentNode() const = 0;
    virtual QString GetPathName() const = 0;
    /// `subject`, which named this item as its delete observer, is being deleted; only its address may be
    /// used.
    virtual void OnDeleted(IDeleteSubject* subject) = 0;
};

/// Common part of what hangs in the tree: parent and path.
class TreeItem : public ITreeItem {
public:
    /// Null for the root, and for an item that was made without a parent.
    Node* GetParentNode() const override { return m_parent; }
    /// Full slash-separated path; "/" for the root. It is made at each call. The first child of a name has
    /// the name as its segment, later ones of the same name have "#2", "#3", ... behind it, counted over the
    /// life of the parent and never given twice.
    QString GetPathName() const override;
    /// The path as above, but "" for the root: "/" and a name can follow it.
    QString GetPathName_NoSlashForRoot() const;

    /// Tells the observers to look again.
    void Commit(IObserver* originator = nullptr);
    void NotifyObservers(TChangeCode code, IObserver* causer = nullptr) override {
        Observable::NotifyObservers(code, causer);
    }

    /// The item told when this one is deleted; null unless one was set.
    ITreeItem* GetDeleteObserver() const override { return nullptr; }
    void SetDeleteObserver(ITreeItem*) override {}
    void OnDeleted(IDeleteSubject*) override {}

protected:
    TreeItem(Node* parent, Names::Id name) : m_name(name), m_parent(parent) {}

    bool m_attached : 1 = false;
    bool m_announced : 1 = false;
    bool m_autoDeleteAtAdd : 1 = true;
    bool m_isInBlock : 1 = false; ///< made from a shape
    bool m_isFilled : 1 = false;  ///< has the values of its shape
    quint16 m_shape = 0;
    Names::Id m_name;
    Node* m_parent;
    quint32 m_ordinal = 0; ///< 1 for the first of its name, 2 for the second, ...; 0 while not attached
};

/// The subject as a node; null when it is none.
Node* node_cast(Observable* subject);

/// Name and type of each value of a node, in order of attachment.
struct ValueDescriptor {
    struct Entry {
        QString name;
        ValueType type;
    };
    std::vector<Entry> values;
};

/// Inner node of the tree: named sub-nodes, of which many may carry the same name, and named values, whose
/// names are unique. The node owns both. Nodes and values are separate name spaces.
///
/// When a node ends, its observers get code 18 and those that are then still registered code 2; then each of
/// its values turns to state "removing" and its observers get code 2; then the sub-nodes follow, likewise.
///
/// \code
/// auto* entry = new Node(list, QStringLiteral("Bookmark"));
/// list->AddItemUnique(entry); // the list owns the entry now
/// entry->CreateValue(QStringLiteral("comment"), Value<QString>());
/// auto* comment = entry->FindOwn<Value<QString>>(Names::Intern(QStringLiteral("comment")));
/// comment->SetValue(QStringLiteral("calling"));
/// \endcode
class Node : public TreeItem {
public:
    /// Makes a node that is to be attached to `parent` with `AddItemUnique` or `AddNode`; until then the
    /// caller owns it and no path leads to it.
    Node(Node* parent, const QString& name);
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;
    ~Node() override;
    static void operator delete(Node* node, std::destroying_delete_t);

    /// Makes an entry that can be filled from a shape; like any new node it is to be attached to `parent`.
    [[nodiscard]] static Node* NewEntry(Node* parent, Names::Id name, const Shape& shape);
    /// Makes all values of the entry's shape, with empty content. False, with nothing made, when the entry
    /// has no shape, has values already, or does not own its values.
    bool FillFromShape();
    /// A value of an entry that was filled, by its place among the fields; V is the field's type.
    template <typename V>
    V& ShapedValue(size_t field) {
        ValueBase& value = shaped(shape().Fields()[field]);
        Q_ASSERT(m_isFilled && value.GetType() == V::Type);
        return static_cast<V&>(value);
    }

    const QString& GetName() const { return Names::Text(m_name); }
    /// Renames the node; it gets the next free segment of the new name. `notify` says whether observers are
    /// told.
    void SetName(const QString& name, IObserver* originator, bool notify);
    /// Whether a path leads from the tree's root to this node.
    bool IsInTree() const;

    /// Attaches a node made for this parent (or for none) and takes ownership; siblings of the same name are
    /// kept apart by their segments. Observers get code 1. An attached or null item is ignored.
    void AddItemUnique(Node* child);
    /// Attaches a value; when its name is taken it gets "#2", "#3", ... appended to it.
    void AddItemUnique(ValueBase* value);
    /// Creates the nodes that are missing on the path, relative to this node; false when none was missing. A
    /// node created by its path is found by that path, also when another one was there before.
    bool AddNode(const QString& path);
    /// Attaches `child` under `name`; false, and the caller keeps it, when a child of that segment exists.
    [[nodiscard]] bool AddNode(const QString& name, Node* child);
    /// Attaches a value and takes ownership; false, and the caller keeps it, when a value of that name
    /// exists.
    [[nodiscard]] bool AddValue(const QString& name, ValueBase* value);
    [[nodiscard]] bool AddValue(Names::Id name, ValueBase* value);
    /// Creates a value of the prototype's type, limits and content; null when the name is taken.
    ValueBase* CreateValue(const QString& name, const ValueBase& prototype);

    /// The value at a path relative to this node; null when there is none.
    ValueBase* GetValue(const QString& path) const;
    ValueBase* FindOwnValue(Names::Id name) const;
    /// The node's own value of that name as type V; null when it is absent or of another type.
    template <typename V>
    V* FindOwn(Names::Id name) const {
        return value_cast<V>(FindOwnValue(name));
    }
    /// A descendant node by relative path; "" is this node itself; null when absent.
    Node* GetNode(const QString& path) const { return findNode(path); }
    Node* GetSubTree(const QString& path) const { return findNode(path); }
    /// Removes and destroys a value; false when absent.
    bool DeleteValue(const QString& name);
    /// Removes and destroys a child node; false when it is not a child of this node.
    bool DeleteNode(Node* child);
    /// Removes and destroys the given children in one go: observers of this node are told once. A keeper gets
    /// them instead of the recorder of changes, and they are not destroyed.
    void DeleteNodes(const std::vector<Node*>& children, NodeKeeper* keeper = nullptr);
    /// Removes and destroys all sub-nodes and values; observers of this node get code 1, once.
    void DeleteChildren();

    /// Whether the node is what its shape says and no more, so that it can be parked.
    bool CanPark() const;
    /// Takes a node that is being removed off its parent as it is, to be attached again by `Restore`. For all
    /// others it ends: nobody observes it or its values, and weak references find nothing. The caller owns it
    /// then. False, with nothing done, when it cannot be parked, or not all have been told of its end.
    bool Park();

    /// A node that takes the place of a child that was removed: its serial and its number among those of its
    /// name, which make its old path.
    struct Returning {
        Node* child;
        quint32 serial;
        quint32 ordinal;
    };
    /// Attaches children at their old places, in one go, and takes ownership; they are in order of their
    /// serials, and no child has these. Observers get code 1 and code 0, once each. Not to be called while
    /// children are being removed.
    void Restore(std::span<const Returning> children);
    /// Counts the calls of `Restore`: who follows the children by their serials looks at all of them again.
    quint32 RestoreCount() const;

    /// Sub-nodes in order of attachment.
    size_t ChildCount() const;
    std::vector<Node*> Children() const;
    /// Returns the sub-nodes attached after `serial`, in order, and moves `serial` on. 0 gives all of them.
    std::vector<Node*> ChildrenSince(quint32& serial) const;
    /// The place of this node in the order of attachment to its parent, counted from 1 over the parent's
    /// life.
    quint32 GetSerial() const;
    /// The child of that serial; null when there is none.
    Node* ChildBySerial(quint32 serial) const;
    /// 1 for the first child of its name that the parent has had, 2 for the second, ...; 0 while not
    /// attached.
    quint32 GetOrdinal() const { return m_ordinal; }
    /// The shape that says all of this entry but its contents; null for any other node.
    const Shape* WholeShape() const;
    /// Tells the observers to look again since these sub-nodes changed in themselves. While they are told,
    /// `ChangedChildren` names them; when it is empty, anything may have changed.
    void CommitChanges(std::span<Node* const> children, IObserver* originator);
    std::span<Node* const> ChangedChildren() const;
    /// Where a value lies in the entry's block, in words; 0 for one that is not of the entry's shape.
    quint8 PlaceOf(const ValueBase& value) const {
        return value.IsOfShape() && value.block() == this ? value.m_place : quint8(0);
    }
    /// The place of the field of that name, where the entry has no other values than those of its shape; 0
    /// for a name or type that the shape lacks. Entries of one `ShapeId` have the same places.
    quint8 PlaceOf(Names::Id name, ValueTypes types) const;
    /// 0 for an entry that has other values than those of a shape.
    quint16 ShapeId() const;
    /// Adds the observer to the values at these places (0: to none), as each one's `AddObserver` would.
    void AddObserverAt(std::span<const quint8> places, IObserver& observer);
    /// The value at a place that `PlaceOf` gave, as long as it lives.
    ValueBase* ValueAtPlace(quint8 place) const {
        return reinterpret_cast<ValueBase*>(reinterpret_cast<quintptr>(this) + place * Shape::Word);
    }
    /// The sub-node attached last, while it is there.
    Node* LastChild() const;
    ValueBase* FirstValue() const;
    static ValueBase* NextValue(const ValueBase* value);

    /// Sets whether values attached from now on (or all values) are destroyed with the node. Any other value
    /// stays when the node ends, and belongs to its maker again.
    void SetAutoDeleteAtAddValue(bool on) { m_autoDeleteAtAdd = on; }
    void SetAllValuesAutoDelete(bool on);

    /// The full path as last completed by `SetLastCompletePathName(true)`; `false` forgets it. It stays what
    /// it was when the node is renamed or removed from its place.
    QString GetLastCompletePathName() const;
    void SetLastCompletePathName(bool complete);

    /// Descriptor of the node's values as they are now; owned by the node, valid until the next call.
    const ValueDescriptor* GetValueDescriptor() const;

    /// The node's content as a text dump: one line per value and node, indented by depth.
    std::string GetAsStdString() const;
    /// Sets values and creates nodes and values as the dump says; what it does not name stays. A malformed
    /// line is skipped with a trace.
    void SetAsStdString(const char* text, IObserver* originator = nullptr);
    /// The same for the node's own values only.
    std::string GetValueAsStdString() const;
    void SetValueAsStdString(const char* text, IObserver* originator = nullptr);
    /// Appends the dump of this node, indented by `depth`, down to `maxDepth` levels below it (-1: all).
    void AddTreeString(std::string& out, int depth, int maxDepth) const;

    QString PathOfChild(const QString& segment) const;
    /// Counts removed values: while it stays the same, pointers to this node's values stay good.
    quint32 RemovedValues() const;

    ITreeItem* GetDeleteObserver() const override;
    void SetDeleteObserver(ITreeItem* item) override;
    Life::Handle WatchedHandle() const;

protected:
    Life::Handle follower() const override { return m_follower; }
    bool isFollower(Life::Handle observer) override;

private:
    friend class ValueBase;
    friend class TreeItem;
    struct Side;
    struct Rare;
    struct RemovalCursor;

    Node(Node* parent, Names::Id name);

    Node* findNode(QStringView path) const;
    Node* findChild(QStringView segment) const;
    QString segment() const;
    Side& side();
    Rare& rare();
    Rare* findRare() const;
    void attach(Node* child, bool asNamed);
    void takePlace(Node& parent, const Returning& place);
    void unlinkChild(Node* child);
    void linkValue(ValueBase* value);
    void unlinkValue(ValueBase* value);
    void stepAside(const ValueBase* value);
    bool renameValue(ValueBase* value, Names::Id name);
    bool announceRemoval();
    bool announceValues(RemovalCursor& cursor);
    bool announceChildren(RemovalCursor& cursor);
    void removeChild(Node* child);
    void stopRemovals();

    const Shape& shape() const { return Shape::at(m_shape); }
    ValueBase& shaped(const Shape::Field& field) const { return *ValueAtPlace(field.place); }
    const Shape::Field& fieldOf(const ValueBase& value) const;
    bool changeLimits(const ValueBase& value, NumberLimits::Id limits);
    void leaveShape();
    bool endShapedValues();
    static void endPart(Node* block);

    quint32 m_index = 0; ///< place among the parent's children
    /// The first observer of the node, usually its mediator. A bit in a value says that it observes that,
    /// too.
    Life::Handle m_follower;
    std::unique_ptr<Side> m_side; ///< what entries made from a shape do without
};
