#include "host/valuetree/valuebase.h"

#include "host/valuetree/node.h"

#include <QTimer>

#include <memory>
#include <unordered_map>
#include <vector>

/// What few values need: transactions, delays and a delete observer of their own.
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

template <typename Extras>
std::unordered_map<const ValueBase*, std::unique_ptr<Extras>>& extrasTable() {
    static auto* const table = new std::unordered_map<const ValueBase*, std::unique_ptr<Extras>>;
    return *table;
}

} // namespace

ValueBase::~ValueBase() {
    if (m_parent)
        m_parent->unlinkValue(this);
    if (!m_hasExtras)
        return;
    ITreeItem* const told = findExtras()->deleteObserver;
    extrasTable<Extras>().erase(this);
    if (told)
        told->OnDeleted(this);
}

void ValueBase::AnnounceRemoval() {
    if (m_state == TValueState::Removing)
        return;
    m_state = TValueState::Removing;
    NotifyObservers(TChangeCode::Removing, nullptr);
}

ValueBase::Extras& ValueBase::extras() {
    std::unique_ptr<Extras>& entry = extrasTable<Extras>()[this];
    if (!entry)
        entry = std::make_unique<Extras>();
    m_hasExtras = true;
    return *entry;
}

ValueBase::Extras* ValueBase::findExtras() const {
    return m_hasExtras ? extrasTable<Extras>().find(this)->second.get() : nullptr;
}

void ValueBase::SetName(const QString& name, IObserver* originator) {
    const Names::Id id = Names::Intern(name);
    if (id == m_name || (m_parent && !m_parent->renameValue(this, id)))
        return;
    m_name = id;
    HasChanged(TChangeCode::LookAgain, originator);
}

QString ValueBase::GetPathName() const {
    return m_parent ? m_parent->PathOfChild(GetName()) : GetName();
}

void ValueBase::SetState(TValueState state, IObserver* originator) {
    if (state == m_state)
        return;
    m_state = state;
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
    return e && e->deleteObserver ? e->deleteObserver : m_parent;
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
