#include "host/valuetree/valuebase.h"

#include "host/valuetree/node.h"
#include "host/valuetree/nodeparts.h"

#include <QTimer>

#include <memory>
#include <optional>
#include <vector>

/// What few values need: transactions, delays, a delete observer and rare limits of their own.
struct ValueBase::Extras {
    struct Override {
        int id;
        unsigned milliseconds;
    };

    int transactions = 0;
    unsigned delay = 0;
    std::vector<Override> overrides;
    int nextOverrideId = 1;
    bool scheduled = false;
    TChangeCode gatheredCode = TChangeCode::ValueChanged;
    IObserver* gatheredOriginator = nullptr;
    ITreeItem* deleteObserver = nullptr;
    std::optional<NumberLimits> limits; ///< when the table of limits is full

    unsigned effectiveDelay() const { return overrides.empty() ? delay : overrides.back().milliseconds; }
};

/// Sends what a value has gathered when its delay is over.
class DelayedUpdates {
public:
    static void Schedule(ValueBase& value, unsigned milliseconds) {
        QTimer::singleShot(static_cast<int>(milliseconds), [ref = WeakRef<ValueBase>(&value)] {
            if (ValueBase* v = ref.get())
                Send(*v);
        });
    }

private:
    static void Send(ValueBase& value) {
        ValueBase::Extras& extras = value.extras();
        extras.scheduled = false;
        // A transaction under way tells of all changes when it ends.
        if (extras.transactions == 0)
            value.NotifyObservers(extras.gatheredCode, extras.gatheredOriginator);
    }
};

namespace {

bool isOrdinaryChange(TChangeCode code) {
    return code == TChangeCode::ValueChanged || code == TChangeCode::LookAgain ||
           code == TChangeCode::ChildrenChanged;
}

} // namespace

static_assert(sizeof(ValueBase) == 16, "twelve bytes, and four for the content of small values");

const void* ValueBase::s_beingMade = nullptr;

void* ValueBase::operator new(size_t size) {
    void* const memory = new (::operator new(sizeof(Head) + size)) Head + 1;
    s_beingMade = memory;
    return memory;
}

void ValueBase::operator delete(void* memory) {
    s_beingMade = nullptr;
    ::operator delete(static_cast<Head*>(memory) - 1);
}

void ValueBase::operator delete(ValueBase* value, std::destroying_delete_t) {
    Node* const block = value->m_place != 0 ? value->block() : nullptr;
    void* const memory = dynamic_cast<void*>(value); // a class may have other bases in front
    value->~ValueBase();
    if (block)
        Node::endPart(block);
    else
        operator delete(memory);
}

ValueBase::~ValueBase() {
    forgetFollower();
    if (Node* parent = GetParentNode())
        parent->unlinkValue(this);
    Head* const h = head();
    if (!h)
        return;
    const std::unique_ptr<Extras> e(h->extras);
    if (m_hasHeadBeside)
        Head::Drop(this);
    if (e && e->deleteObserver)
        e->deleteObserver->OnDeleted(this);
}

ValueBase::Head* ValueBase::head() const {
    if (m_hasHeadInFront)
        return reinterpret_cast<Head*>(const_cast<ValueBase*>(this)) - 1;
    return m_hasHeadBeside ? Head::Beside(this) : nullptr;
}

/// The head of a value of a shape starts with what the shape knows.
ValueBase::Head& ValueBase::needHead() {
    if (Head* h = head())
        return *h;
    Head& made = Head::MakeBeside(this);
    if (IsOfShape()) {
        const Shape::Field& field = block()->fieldOf(*this);
        made.name = field.name;
        made.limits = field.limits;
    }
    m_hasHeadBeside = 1;
    return made;
}

/// Leaves the shape, but not the block's memory.
void ValueBase::becomeLoose() {
    needHead();
    m_isLoose = 1;
}

Node* ValueBase::GetParentNode() const {
    if (IsOfShape())
        return block();
    const Head* h = head();
    return h ? h->parent : nullptr;
}

Names::Id ValueBase::NameId() const {
    if (IsOfShape())
        return block()->fieldOf(*this).name;
    const Head* h = head();
    return h ? h->name : 0;
}

const NumberLimits& ValueBase::OwnLimits() const {
    if (const Head* h = head())
        return h->limits == NumberLimits::NotKept ? *h->extras->limits : NumberLimits::At(h->limits);
    return NumberLimits::At(IsOfShape() ? block()->fieldOf(*this).limits : 0);
}

void ValueBase::SetOwnLimits(const NumberLimits& limits) {
    const NumberLimits::Id id = NumberLimits::Keep(limits);
    if (IsOfShape() && !head() && id != NumberLimits::NotKept && block()->changeLimits(*this, id))
        return;
    needHead().limits = id;
    if (id == NumberLimits::NotKept)
        extras().limits = limits;
}

Life::Handle ValueBase::follower() const {
    const Node* parent = GetParentNode();
    return parent ? parent->m_follower : Life::Handle{};
}

bool ValueBase::isFollower(Life::Handle observer) {
    const Node* parent = GetParentNode();
    return parent && parent->m_follower == observer;
}

void ValueBase::AnnounceRemoval() {
    if (m_isRemoving)
        return;
    m_isRemoving = 1;
    NotifyObservers(TChangeCode::Removing, nullptr);
}

ValueBase::Extras& ValueBase::extras() {
    Head& h = needHead();
    if (!h.extras)
        h.extras = new Extras;
    return *h.extras;
}

ValueBase::Extras* ValueBase::findExtras() const {
    const Head* h = head();
    return h ? h->extras : nullptr;
}

void ValueBase::SetName(const QString& name, IObserver* originator) {
    const Names::Id id = Names::Intern(name);
    Node* parent = GetParentNode();
    if (id == NameId() || (parent && !parent->renameValue(this, id)))
        return;
    needHead().name = id;
    HasChanged(TChangeCode::LookAgain, originator);
}

QString ValueBase::GetPathName() const {
    const Node* parent = GetParentNode();
    return parent ? parent->PathOfChild(GetName()) : GetName();
}

void ValueBase::SetState(TValueState state, IObserver* originator) {
    if (state == GetState())
        return;
    m_isRemoving = state == TValueState::Removing;
    HasChanged(state == TValueState::Removing ? TChangeCode::Removing : TChangeCode::LookAgain, originator);
}

void ValueBase::notifyOrGather(TChangeCode code, IObserver* originator) {
    Extras* e = findExtras();
    if (!e || !isOrdinaryChange(code)) {
        NotifyObservers(code, originator);
        return;
    }
    if (e->transactions > 0)
        return;
    if (e->effectiveDelay() == 0) {
        NotifyObservers(code, originator);
        return;
    }
    e->gatheredCode = code;
    if (e->scheduled) {
        // Changes of several parties in one delay: nobody is left out.
        if (originator != e->gatheredOriginator)
            e->gatheredOriginator = nullptr;
        return;
    }
    e->gatheredOriginator = originator;
    e->scheduled = true;
    DelayedUpdates::Schedule(*this, e->effectiveDelay());
}

void ValueBase::StartTransaction(IObserver*) {
    ++extras().transactions;
}

void ValueBase::EndTransaction(TChangeCode code, IObserver* originator) {
    Extras* e = findExtras();
    if (e && e->transactions > 0 && --e->transactions == 0)
        HasChanged(code, originator);
}

bool ValueBase::IsTransactionActive() const {
    const Extras* e = findExtras();
    return e && e->transactions > 0;
}

int ValueBase::SetUpdateTimerTime(unsigned milliseconds) {
    return static_cast<int>(std::exchange(extras().delay, milliseconds));
}

int ValueBase::OverrideTimer(unsigned milliseconds) {
    Extras& e = extras();
    e.overrides.push_back({e.nextOverrideId, milliseconds});
    return e.nextOverrideId++;
}

void ValueBase::KillOverrideTimer(int id) {
    if (Extras* e = findExtras())
        std::erase_if(e->overrides, [id](const Extras::Override& o) { return o.id == id; });
}

ITreeItem* ValueBase::GetDeleteObserver() const {
    const Extras* e = findExtras();
    return e && e->deleteObserver ? e->deleteObserver : GetParentNode();
}

void ValueBase::SetDeleteObserver(ITreeItem* item) {
    extras().deleteObserver = item;
}

ValueTransaction::ValueTransaction(ValueBase& value, std::initializer_list<TChangeCode> codes,
                                   IObserver* originator)
    : m_value(&value), m_originator(originator), m_count(std::min(codes.size(), MaxCodes)) {
    std::copy_n(codes.begin(), m_count, m_codes);
    value.StartTransaction(originator);
}

ValueTransaction::~ValueTransaction() {
    // The first code ends the transaction; an observer may delete the value at any of them.
    for (size_t i = 0; i < m_count; ++i) {
        ValueBase* value = m_value.get();
        if (!value)
            return;
        if (i == 0)
            value->EndTransaction(m_codes[0], m_originator);
        else
            value->HasChanged(m_codes[i], m_originator);
    }
    if (m_count == 0 && m_value)
        m_value->EndTransaction(TChangeCode::LookAgain, m_originator);
}
