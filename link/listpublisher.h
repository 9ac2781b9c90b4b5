#pragma once

#include "link/layouttable.h"
#include "link/messagebus.h"
#include "link/rowtable.h"

/// Publishes a list so that any reader can tell when it has all of it: a manifest, chunks of rows, and a log
/// of the latest changes in a fixed number of places. A change costs its own bytes, the manifest, and at most
/// the chunks that it touches, since a chunk is published anew when the log loses its oldest change to it.
///
/// Until `StartSending` all goes on but the sending.
class ListPublisher {
public:
    /// Places of the log: changes that a reader may lag behind without reading chunks again.
    static constexpr quint64 LogPlaces = 256;

    ListPublisher(MessageBus& bus, const QByteArray& listTopic, const QString& seat);

    RowTable rows;
    LayoutTable layouts;

    Messages::Revision Revision() const { return m_revision; }
    /// The revision that rows of the next change get.
    Messages::Revision NextRevision() const { return m_revision + 1; }

    /// What a change did to a row of a chunk: it is new or changed, or was removed.
    struct Step {
        quint32 chunk = 0;
        quint32 serial = 0; ///< 0: removed
        Messages::EntryId removed = 0;
    };
    /// Publishes a change of rows that have been put or removed. One of most of a long list, or of more bytes
    /// than go into a message, goes out as a new generation.
    void Publish(const std::vector<Step>& steps);
    /// The same as a message, for the revision that is the newest.
    QByteArray DeltaOf(const std::vector<Step>& steps) const;
    /// Publishes all rows as a new generation, spread over chunks in order.
    void PublishAnew();
    /// Sends what a broker that has this manifest lacks, all when it has none of this generation, and from
    /// then on what changes. Nothing is sent in a later connection of the bus, which may lack what got lost
    /// between.
    void StartSending(const std::optional<Messages::Manifest>& atBroker);
    void StopSending() { m_connection = 0; }

    const QByteArray& Topic() const { return m_topic; }

private:
    struct ChunkState {
        Messages::Revision published = 0; ///< 0: never
        Messages::Revision dirtySince = 0;
    };

    qsizetype bytesOf(const std::vector<Step>& steps) const;
    void catchUp(const std::optional<Messages::Manifest>& atBroker);
    void touch(quint32 chunk);
    void sendChunk(quint32 chunk);
    void sendManifest();
    /// Layouts that have not been sent yet.
    void sendLayouts();
    bool isSending() const { return m_connection != 0 && m_connection == m_bus.Connections(); }
    void send(const QByteArray& topic, const QByteArray& payload);
    quint32 publishedChunks() const;

    MessageBus& m_bus;
    QByteArray m_topic;
    QString m_seat;
    quint64 m_connection = 0; ///< of the bus, to which all is sent; 0 while nothing is
    quint64 m_generation = 0;
    Messages::Revision m_revision = 0;
    Messages::Revision m_logFrom = 1;
    std::vector<QByteArray> m_log = std::vector<QByteArray>(LogPlaces); ///< by revision modulo places
    std::vector<ChunkState> m_chunks;
    std::deque<quint32> m_dirty; ///< chunks in order of `dirtySince`
    quint32 m_layoutsSent = 0;
    quint32 m_chunksAtBroker = 0; ///< of this or an older generation
};
