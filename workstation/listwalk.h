#pragma once

#include "host/freqstorexml/frequencystorelist.h"
#include "host/freqstorexml/liststreams.h"

#include <QBuffer>

class FrequencyNodeMediatorCtrl;

/// Writes a list of entries as frequency-store XML a few at a time, while the operator goes on working. What
/// comes meanwhile is at the end, what goes or changes behind the walk is as it was; an entry that stays is
/// there once. The controller outlives this.
class ListWalk {
public:
    explicit ListWalk(FrequencyNodeMediatorCtrl& list);

    /// Goes on for about so many milliseconds; 0 goes to the end. True when the end is reached.
    bool GoOn(int milliseconds);
    /// What has been written since the last call.
    QByteArray TakeBytes();
    qint64 EntryCount() const { return m_count; }

private:
    unsigned long indexBehindLast();

    FrequencyNodeMediatorCtrl& m_list;
    QBuffer m_buffer;
    FreqStoreXml::FrequencyStoreListWriter m_writer;
    FreqStoreXml::FrequencyStoreList m_one; ///< each entry describes itself into it
    quint32 m_serial = 0;                   ///< of the entry that was written last
    qint64 m_count = 0;
    bool m_isDone = false;
};
