#include "workstation/listwalk.h"

#include "host/freqlist/frequencynodemediator.h"
#include "host/freqlist/frequencynodemediatorctrl.h"

#include <QElapsedTimer>

using FreqStoreXml::FrequencyStoreEntry;
using FreqStoreXml::FrequencyStoreList;

namespace {

/// The clock is looked at after so many entries.
constexpr int EntriesPerLook = 32;

quint32 serialOf(const FrequencyNodeMediator* mediator) {
    return mediator && mediator->GetNode() ? mediator->GetNode()->GetSerial() : 0;
}

} // namespace

ListWalk::ListWalk(FrequencyNodeMediatorCtrl& list) : m_list(list), m_writer(m_buffer, false) {
    m_buffer.open(QIODevice::WriteOnly);
    m_writer.Begin(FrequencyStoreList::NameToUsage(list.GetUsageName()));
}

/// Entries stand in the order in which they came: the place is found again whatever has gone meanwhile.
unsigned long ListWalk::indexBehindLast() {
    unsigned long first = 0;
    for (unsigned long end = m_list.size(); first < end;) {
        const unsigned long middle = (first + end) / 2;
        if (serialOf(m_list.At(middle)) <= m_serial)
            first = middle + 1;
        else
            end = middle;
    }
    return first;
}

bool ListWalk::GoOn(int milliseconds) {
    QElapsedTimer time;
    time.start();
    unsigned long index = indexBehindLast();
    int untilLook = EntriesPerLook;
    while (FrequencyNodeMediator* mediator = m_list.At(index++)) {
        mediator->AddToXml(m_one);
        for (const FrequencyStoreEntry& entry : std::as_const(m_one).GetFrequencyStoreEntry())
            m_writer.Append(entry);
        m_one.GetFrequencyStoreEntry().resize(0);
        m_serial = serialOf(mediator);
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
