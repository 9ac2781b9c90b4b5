#pragma once

#include "host/freqlist/boundvalues.h"
#include "host/freqlist/keys.h"
#include "host/freqlist/mediator.h"
#include "host/freqlist/multiviewmediator.h"
#include "host/valuetree/node.h"

namespace FreqStoreXml {
class FrequencyStoreList;
}

/// Mediator of one frequency entry: finds the entry's values under its node, observes them, shows them in
/// rows, and writes them into interchange lists. It owns no value.
///
/// \code
/// class Bookmark : public FrequencyNodeMediator {
/// public:
///     Bookmark(MediatorCtrl* controller, Observable* entry) : FrequencyNodeMediator(controller, entry, 0) {
///         UpdateDependentValues();
///     }
///     QString ToString() override {
///         return GetFrequencyString(0) + QLatin1Char('\t') + GetCommentString(0);
///     }
/// };
/// \endcode
class FrequencyNodeMediator : public Mediator, public MultiViewMediator {
public:
    /// `kind` is the controller's number for its mediators; it means nothing here.
    FrequencyNodeMediator(MediatorCtrl* controller, Observable* entryNode, int kind);
    ~FrequencyNodeMediator() override;

    void Update(Observable* subject, TChangeCode code) override;
    /// Setters write the entry's value and do nothing when it is missing.
    virtual void SetFrequency(double hertz);
    /// Tunes the receiver to the frequency alone.
    virtual void SetFrequencyOnly(QWidget* view);
    virtual void SetBandwidth(double hertz);
    virtual void SetDemodulation(QString demodulation);
    virtual void SetComment(QString comment);
    /// Replaces the tool tip that `GetTip` makes; an empty text brings that one back.
    virtual void SetTip(QString tip);
    virtual void SetType(char type);
    /// Texts as operators read them; empty when the value is missing.
    virtual QString GetFrequencyString(int subItem);
    virtual QString GetBandwidthString(int subItem);
    virtual QString GetDemodulationString(int subItem);
    virtual QString GetCommentString(int subItem);
    virtual QString GetTipString(int subItem);
    virtual QString GetTypeString(int subItem);
    /// One line of text that describes the entry; empty for lists without such a form.
    virtual QString ToString();
    /// Usage name of the list.
    virtual QString GetUsage();
    /// Appends one entry that describes this one.
    virtual void AddToXml(FreqStoreXml::FrequencyStoreList& list);

    /// Text of the cell of a column; false when the entry has nothing for that identifier. All views fill,
    /// sort and search their rows through it.
    virtual bool CellText(unsigned columnId, QString& text);
    /// The value that the operator edits in the cell of a column; null when there is none to be edited.
    virtual ValueBase* EditedValue(unsigned columnId);
    /// What is painted before the text of the cell of a column; empty for nothing.
    virtual QString CellAddition(unsigned columnId);

    bool GetFrequency(double& frequency, int subItem) override;
    bool GetBandwidth(double& bandwidth, int subItem) override;
    bool GetComment(QString& comment, int subItem) override;
    bool GetTip(QString& tip, int subItem) override;
    bool GetDemodulation(QString& demodulation, int subItem) override;
    bool GetType(char& type, int subItem) override;
    bool GetSquelchState(QString& state, int subItem) override;
    bool GetSquelchValue(int& value, int subItem) override;
    bool GetAttenuation(QString& attenuation, int subItem) override;
    bool GetAfc(QString& afc, int subItem) override;
    void SetFrequency(QWidget* view) override;
    void UpdateMyViewItems(FrequencyNodeListView* view) override;

    /// Null when the mediator was made over something else; it then has no values.
    Node* GetNode() const { return m_isNode ? static_cast<Node*>(m_observable) : nullptr; }

protected:
    /// A value of the entry's own, or null.
    ValueBase* OwnValue(Names::Id key) const { return GetNode() ? GetNode()->FindOwnValue(key) : nullptr; }
    template <typename V>
    V* Own(Names::Id key) const {
        return value_cast<V>(OwnValue(key));
    }
    /// Binds the value pointers to the node's present values.
    virtual void UpdateDependentValues();

    /// Points `held` at `found`, observing it instead of the one before.
    template <typename V>
    void Rebind(V*& held, V* found) {
        if (held == found)
            return;
        if (held)
            held->DeleteObserver(this);
        held = found;
        if (held)
            held->AddObserver(this);
    }
    /// Forgets `held` when it is `subject` and being removed; true when it was.
    template <typename V>
    bool ForgetIfRemoved(V*& held, const Observable* subject) {
        if (!held || static_cast<const Observable*>(held) != subject ||
            held->GetState() != TValueState::Removing)
            return false;
        held->DeleteObserver(this);
        held = nullptr;
        return true;
    }

    /// The same for the values that are kept small, by number. Mediators of other entries have their own
    /// from `FirstOwn` on, up to `BoundValues::Count`.
    enum BoundNumber : size_t {
        BoundFrequency,
        BoundBandwidth,
        BoundComment,
        BoundDemodulation,
        BoundType,
        FirstOwn
    };
    void Rebind(size_t number, ValueBase* found);
    /// What is to be bound by consecutive numbers: the value of a key, when it is of one of the types.
    struct Binding {
        const FreqList::Key* key;
        ValueTypes types;
    };
    struct Bindings {
        size_t first; ///< number of the first one
        std::span<const Binding> table;
        /// Entries of one shape have the same places: those of the shape that was met last.
        mutable quint16 shape = 0;
        mutable std::array<quint8, BoundValues::Count> places{};
    };
    void Bind(const Bindings& bindings);
    bool ForgetIfRemoved(size_t number, const Observable* subject);
    template <typename V>
    V* Bound(size_t number) const {
        return static_cast<V*>(m_bound.Get(GetNode(), number));
    }

    ValueNumeric<double>* HeldFrequency() const { return Bound<ValueNumeric<double>>(BoundFrequency); }
    ValueNumeric<double>* HeldBandwidth() const { return Bound<ValueNumeric<double>>(BoundBandwidth); }
    Value<QString>* HeldComment() const { return Bound<Value<QString>>(BoundComment); }
    /// Text or selection.
    ValueBase* HeldDemodulation() const { return Bound<ValueBase>(BoundDemodulation); }
    Value<char>* HeldType() const { return Bound<Value<char>>(BoundType); }

private:
    template <typename V>
    bool ownText(Names::Id key, QString& text) const;

    BoundValues m_bound;
};
