#pragma once

#include "host/base/observer.h"
#include "link/listreader.h"

class ValueBase;

/// Shows the records of a list that another seat serves in a list value here, which views and bar follow as
/// any other. Records that come at the end or change in their place are appended and changed there, one by
/// one; the list is filled anew only when others go or come between. Nothing goes the other way: the value
/// must not be changed by others. Its last whole content stays while the server is away.
class RecordClient : public QObject, public IObserver {
    Q_OBJECT

public:
    /// What the records of a list are; none while the list is not whole, or when it has no records.
    static std::optional<ValueType> TypeOf(const ListCopy& copy);

    /// The reader outlives the client. `records` is a value list of DetectionConventional or
    /// ExtendedDetectionConventional; it may end before the client. Throws RGException for another value.
    RecordClient(ListReader& reader, ValueBase& records);
    ~RecordClient() override;

    /// Whether the records of the server are of the value's kind; the list is not shown if they are not.
    bool IsOfOtherKind() const { return m_isOfOtherKind; }

    void Update(Observable* subject, TChangeCode code) override;

private:
    class Filler;
    template <typename Record>
    class FillerOf;

    void take(const ListCopy::Changed& changed);

    ListReader& m_reader;
    WeakRef<ValueBase> m_value;
    std::unique_ptr<Filler> m_filler;
    bool m_isOfOtherKind = false;
};
