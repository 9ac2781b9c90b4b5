#pragma once

#include "host/freqstorexml/frequencystorelist.h"
#include "host/freqstorexml/liststreams.h"
#include "host/valuetree/detection.h"

#include <QBuffer>

#include <memory>

class FrequencyNodeMediatorCtrl;

/// Gives the entries of a list one by one, while the operator goes on working. What comes meanwhile is at the
/// end, what goes or changes behind the place is as it was; an entry that stays is there once.
class EntrySource {
public:
    virtual ~EntrySource() = default;

    virtual FreqStoreXml::FrequencyStoreList::Usage GetUsage() const = 0;
    /// Finds its place again; the list may have changed since the last `Next`.
    virtual void Resume() = 0;
    /// Appends the next entry to a list, which is empty; false at the end.
    virtual bool Next(FreqStoreXml::FrequencyStoreList& one) = 0;
};

/// The entries of a controller, which outlives the result.
std::unique_ptr<EntrySource> EntriesOf(FrequencyNodeMediatorCtrl& list);
/// Detections in the order of their numbers.
std::unique_ptr<EntrySource> EntriesOf(ValueList<DetectionConventional>& list);

/// Writes a list of entries as frequency-store XML a few at a time.
class ListWalk {
public:
    explicit ListWalk(std::unique_ptr<EntrySource> source);

    /// Goes on for about so many milliseconds; 0 goes to the end. True when the end is reached.
    bool GoOn(int milliseconds);
    /// What has been written since the last call.
    QByteArray TakeBytes();
    qint64 EntryCount() const { return m_count; }

private:
    std::unique_ptr<EntrySource> m_source;
    QBuffer m_buffer;
    FreqStoreXml::FrequencyStoreListWriter m_writer;
    FreqStoreXml::FrequencyStoreList m_one; ///< each entry describes itself into it
    qint64 m_count = 0;
    bool m_isDone = false;
};
