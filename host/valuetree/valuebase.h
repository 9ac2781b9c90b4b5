#pragma once

#include "host/base/observer.h"
#include "host/valuetree/names.h"
#include "host/valuetree/numberlimits.h"

#include <QString>

#include <initializer_list>
#include <new>

class ITreeItem;
class Node;

/// State of a value: valid, or in the course of being removed from the tree (its observers then get code 2).
enum class TValueState : quint8 { Valid = 0, Removing = 1 };

/// Kind of a typed value; each class of typed values has one of its own.
enum class ValueType : quint8 {
    Other,
    Bool,
    Char,
    Int,
    Int64,
    Double,
    Text,
    NumericInt,
    NumericInt64,
    NumericDouble,
    Selection,
    DoubleList,
    DetectionList,
    ExtendedDetectionList,
    FrequencyItemMap,
};

/// A subject that tells a tree item when it is deleted. What follows is one chain of interfaces, so that a
/// value or a node carries one table pointer for all of them.
class IDeleteSubject : public Observable {
public:
    virtual ITreeItem* GetDeleteObserver() const = 0;
    virtual void SetDeleteObserver(ITreeItem* item) = 0;
};

/// A set of kinds, one bit for each.
using ValueTypes = quint32;
template <typename... Type>
constexpr ValueTypes TypesOf(Type... types) {
    return (... | (ValueTypes(1) << static_cast<int>(types)));
}

/// A subject that can gather several changes into one notification.
class ISupportTransaction : public IDeleteSubject {
public:
    virtual void StartTransaction(IObserver* originator = nullptr) = 0;
    virtual void EndTransaction(TChangeCode code, IObserver* originator = nullptr) = 0;
    virtual bool IsTransactionActive() const = 0;
};

/// The interface of all values, whatever their type.
class IValue : public ISupportTransaction {
public:
    virtual QString GetStringValue() const = 0;
    virtual void SetStringValue(const QString& text, IObserver* originator = nullptr) = 0;
    virtual QString GetPathName() const = 0;
};

/// Common base of all typed values. A value is created free, belongs to its node once it is attached
/// (`Node::AddValue`, `Node::CreateValue`), and is destroyed with the node. An originator named in a changing
/// operation is not notified of that change; null means that everyone is.
///
/// A value has no timer, no transaction and no observer list of its own until one is used, and knows little
/// of itself: a value of an entry that was made from a shape lies in one block with its node, at a place from
/// which name, limits and order follow (`docs/tree.md` has a drawing). Any other value has a head beside it.
class ValueBase : public IValue {
public:
    ValueBase(const ValueBase&) = delete;
    ValueBase& operator=(const ValueBase&) = delete;
    ~ValueBase() override;

    /// A value on the heap has its head in front of it.
    static void* operator new(size_t size);
    static void* operator new(size_t, void* place) noexcept { return place; }
    static void operator delete(void* memory);
    static void operator delete(ValueBase* value, std::destroying_delete_t);

    const QString& GetName() const { return Names::Text(NameId()); }
    /// Names the value. Under a node, a name that another value there has is refused: the old name stays.
    void SetName(const QString& name, IObserver* originator = nullptr);
    Names::Id NameId() const;

    /// Full slash-separated path, made at each call; of a value that hangs in no tree, its name.
    QString GetPathName() const override;
    Node* GetParentNode() const;

    TValueState GetState() const { return m_isRemoving ? TValueState::Removing : TValueState::Valid; }
    void SetState(TValueState state, IObserver* originator = nullptr);

    /// Notifies the observers of `code`: at once, or gathered when a transaction or a delay is active.
    void HasChanged(TChangeCode code, IObserver* originator = nullptr) {
        if (HasObservers())
            notifyOrGather(code, originator);
    }
    void NotifyObservers(TChangeCode code, IObserver* causer = nullptr) override {
        Observable::NotifyObservers(code, causer);
    }

    /// Transactions nest; the end of the outermost notifies once, with the code that it is given.
    void StartTransaction(IObserver* originator = nullptr) override;
    void EndTransaction(TChangeCode code, IObserver* originator = nullptr) override;
    bool IsTransactionActive() const override;

    /// Delays notifications of changes by `milliseconds`, so that many changes become one; 0 means at once.
    /// Returns the delay before.
    int SetUpdateTimerTime(unsigned milliseconds);
    /// Replaces the delay until `KillOverrideTimer` is called with the id returned; the newest one holds.
    int OverrideTimer(unsigned milliseconds);
    void KillOverrideTimer(int id);

    /// The tree item that is told when the value is deleted: its node unless another one was set.
    ITreeItem* GetDeleteObserver() const override;
    void SetDeleteObserver(ITreeItem* item) override;

    /// Copies the content of a value of the same type; another type is ignored.
    virtual void Assign(const ValueBase& other) = 0;
    /// Whether `other` is of the same type and has the same content.
    virtual bool Compare(const ValueBase* other) const = 0;
    ValueType GetType() const { return static_cast<ValueType>(m_type); }
    virtual QString GetTypeName() const = 0;
    /// A free value of the same type, limits, items and content; the caller owns it.
    [[nodiscard]] virtual ValueBase* Clone() const = 0;

protected:
    explicit ValueBase(ValueType type) : m_type(static_cast<quint8>(type) & 15) {
        if (s_beingMade == this) {
            m_hasHeadInFront = 1;
            s_beingMade = nullptr;
        }
    }
    /// Turns the state to removing and tells the observers, once. Each concrete class calls it first thing in
    /// its destructor, so that observers still meet a whole value.
    void AnnounceRemoval();

    const NumberLimits& OwnLimits() const;
    void SetOwnLimits(const NumberLimits& limits);
    /// Whether the value is one of very many of its name, made from a shape.
    bool IsOfShape() const { return m_place != 0 && !m_isLoose; }

    Life::Handle follower() const override;
    bool isFollower(Life::Handle observer) override;

private:
    friend class Node;
    friend class DelayedUpdates;
    struct Extras;
    struct Head;

    void notifyOrGather(TChangeCode code, IObserver* originator);
    Extras& extras();
    Extras* findExtras() const;
    Head* head() const;
    Head& needHead();
    Node* block() const {
        return reinterpret_cast<Node*>(reinterpret_cast<quintptr>(this) -
                                       quintptr(m_place) * sizeof(quint64));
    }
    void becomeLoose();

    /// Where the value lies that is about to be made on the heap.
    static const void* s_beingMade;

    /// Distance from the node in front of the block, in words of eight bytes; 0 for a value in no block.
    quint8 m_place = 0;
    quint8 m_type : 4;
    quint8 m_isRemoving : 1 = 0;
    quint8 m_autoDelete : 1 = 1;
    quint8 m_hasHeadInFront : 1 = 0;
    quint8 m_hasHeadBeside : 1 = 0; ///< in a table
    quint8 m_isLoose : 1 = 1;       ///< no part of its node's shape
};

/// Scope of a transaction on a value; when it ends, the listed codes are sent, in order.
class ValueTransaction {
public:
    ValueTransaction(ValueBase& value, std::initializer_list<TChangeCode> codes, IObserver* originator);
    ValueTransaction(const ValueTransaction&) = delete;
    ValueTransaction& operator=(const ValueTransaction&) = delete;
    ~ValueTransaction();

private:
    static constexpr size_t MaxCodes = 8;

    WeakRef<ValueBase> m_value;
    IObserver* m_originator;
    TChangeCode m_codes[MaxCodes];
    size_t m_count;
};
