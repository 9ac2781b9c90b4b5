#include "workstation/listwalk.h"

#include "controls/frequencystore/detections/searchmcrecords.h"
#include "host/freqlist/frequencynodemediator.h"
#include "host/freqlist/frequencynodemediatorctrl.h"

#include <QElapsedTimer>

#include <algorithm>

using FreqStoreXml::FrequencyStoreEntry;
using FreqStoreXml::FrequencyStoreList;

namespace {

/// The clock is looked at after so many entries.
constexpr int EntriesPerLook = 32;

quint32 serialOf(const FrequencyNodeMediator* mediator) {
    return mediator && mediator->GetNode() ? mediator->GetNode()->GetSerial() : 0;
}

class NodeEntries final : public EntrySource {
public:
    explicit NodeEntries(FrequencyNodeMediatorCtrl& list) : m_list(list) {}

    FrequencyStoreList::Usage GetUsage() const override {
        return FrequencyStoreList::NameToUsage(m_list.GetUsageName());
    }
    /// Entries stand in the order in which they came: the place is found again whatever has gone meanwhile.
    void Resume() override {
        m_index = 0;
        for (unsigned long end = m_list.size(); m_index < end;) {
            const unsigned long middle = (m_index + end) / 2;
            if (serialOf(m_list.At(middle)) <= m_serial)
                m_index = middle + 1;
            else
                end = middle;
        }
    }
    bool Next(FrequencyStoreList& one) override {
        FrequencyNodeMediator* const mediator = m_list.At(m_index++);
        if (!mediator)
            return false;
        mediator->AddToXml(one);
        m_serial = serialOf(mediator);
        return true;
    }

private:
    FrequencyNodeMediatorCtrl& m_list;
    unsigned long m_index = 0;
    quint32 m_serial = 0; ///< of the entry that was given last
};

class DetectionEntries final : public EntrySource {
public:
    explicit DetectionEntries(ValueList<DetectionConventional>& list) : m_list(&list) {}

    FrequencyStoreList::Usage GetUsage() const override { return FrequencyStoreList::SearchResults; }
    /// A list that was rewritten is gone through from its beginning, past what has been given.
    void Resume() override {
        const ValueList<DetectionConventional>* const list = m_list.get();
        if (!list || (m_count > 0 && list->SeenNow().rewrites == m_rewrites))
            return;
        m_rewrites = list->SeenNow().rewrites;
        const auto& records = list->GetList();
        m_last = records.begin();
        m_count = 0;
        for (; m_last != records.end() && m_last->GetID() <= m_id; ++m_last)
            ++m_count;
        if (m_count > 0)
            --m_last;
    }
    bool Next(FrequencyStoreList& one) override {
        const ValueList<DetectionConventional>* const list = m_list.get();
        if (!list || m_count >= list->Size())
            return false;
        m_last = m_count++ == 0 ? list->GetList().begin() : std::next(m_last);
        m_id = std::max(m_id, m_last->GetID());
        one.AppendFrequencyStoreEntry(SearchMC::ToEntry(*m_last));
        return true;
    }

private:
    WeakRef<ValueList<DetectionConventional>> m_list;
    ValueList<DetectionConventional>::Container::const_iterator m_last; ///< given; unless the count is 0
    quint64 m_count = 0;                                                ///< records up to that one
    quint64 m_rewrites = 0;
    unsigned m_id = 0;
};

} // namespace

std::unique_ptr<EntrySource> EntriesOf(FrequencyNodeMediatorCtrl& list) {
    return std::make_unique<NodeEntries>(list);
}

std::unique_ptr<EntrySource> EntriesOf(ValueList<DetectionConventional>& list) {
    return std::make_unique<DetectionEntries>(list);
}

ListWalk::ListWalk(std::unique_ptr<EntrySource> source)
    : m_source(std::move(source)), m_writer(m_buffer, false) {
    m_buffer.open(QIODevice::WriteOnly);
    m_writer.Begin(m_source->GetUsage());
}

bool ListWalk::GoOn(int milliseconds) {
    QElapsedTimer time;
    time.start();
    m_source->Resume();
    int untilLook = EntriesPerLook;
    while (m_source->Next(m_one)) {
        for (const FrequencyStoreEntry& entry : std::as_const(m_one).GetFrequencyStoreEntry())
            m_writer.Append(entry);
        m_one.GetFrequencyStoreEntry().resize(0);
        ++m_count;
        if (milliseconds == 0 || --untilLook > 0)
            continue;
        if (time.elapsed() >= milliseconds)
            return false;
        untilLook = EntriesPerLook;
    }
    if (!std::exchange(m_isDone, true))
        m_writer.Commit();
    return true;
}

QByteArray ListWalk::TakeBytes() {
    m_buffer.close();
    QByteArray bytes;
    m_buffer.buffer().swap(bytes);
    m_buffer.open(QIODevice::WriteOnly);
    return bytes;
}
