#include "link/listpublisher.h"

#include "link/inturns.h"
#include "link/topics.h"

#include <QRandomGenerator>

namespace {

constexpr quint32 FirstRevisions = 1u << 27;
/// From so many on, a change is published as a new generation when it is most of the list.
constexpr size_t ManySteps = 4096;
/// Brokers limit what they take at once.
constexpr qsizetype LargestDelta = 4 * 1024 * 1024;

} // namespace

using Messages::Delta;
using Messages::Manifest;

ListPublisher::ListPublisher(MessageBus& bus, const QByteArray& listTopic, const QString& seat)
    : m_bus(bus), m_topic(listTopic), m_seat(seat) {
    m_generation = QRandomGenerator::system()->generate64();
    // Revisions of an earlier life of the server mean nothing to this one.
    m_revision = QRandomGenerator::system()->bounded(FirstRevisions);
}

void ListPublisher::touch(quint32 chunk) {
    if (chunk >= m_chunks.size())
        m_chunks.resize(chunk + 1);
    if (m_chunks[chunk].dirtySince != 0)
        return;
    m_chunks[chunk].dirtySince = m_revision;
    m_dirty.push_back(chunk);
}

void ListPublisher::sendChunk(quint32 chunk) {
    if (isSending())
        send(Topics::Numbered(m_topic + "/chunk", chunk),
             Messages::Chunk::EncodeRows(m_generation, m_revision, rows.CountIn(chunk), rows.BytesOf(chunk)));
    m_chunks[chunk].published = m_revision;
    m_chunksAtBroker = std::max(m_chunksAtBroker, chunk + 1);
}

/// Chunks behind the last published one stand in the log alone.
quint32 ListPublisher::publishedChunks() const {
    auto count = static_cast<quint32>(m_chunks.size());
    while (count > 0 && m_chunks[count - 1].published == 0)
        --count;
    return count;
}

void ListPublisher::sendManifest() {
    const quint32 count = layouts.Count();
    const Manifest manifest{m_generation,    m_revision,        m_logFrom, rows.Count(),
                            rows.Checksum(), publishedChunks(), count,     layouts.Checksum(count),
                            m_seat};
    send(m_topic + "/manifest", manifest.Encode());
}

void ListPublisher::sendLayouts() {
    for (; m_layoutsSent < layouts.Count(); ++m_layoutsSent)
        send(Topics::Numbered(m_topic + "/layout", m_layoutsSent), layouts.Bytes(m_layoutsSent));
}

void ListPublisher::send(const QByteArray& topic, const QByteArray& payload) {
    if (isSending())
        m_bus.Publish(topic, payload, MessageBus::Keep::Retained);
}

QByteArray ListPublisher::DeltaOf(const std::vector<Step>& steps) const {
    Delta delta{m_generation, m_revision, rows.Count(), rows.Checksum(), {}};
    delta.steps.reserve(steps.size());
    for (const Step& step : steps) {
        StepOf(delta.steps.size(), steps.size());
        delta.steps.push_back(
            {step.chunk, step.removed, step.serial == 0 ? QByteArrayView() : rows.Find(step.serial)->bytes});
    }
    return delta.Encode();
}

qsizetype ListPublisher::bytesOf(const std::vector<Step>& steps) const {
    qsizetype bytes = 0;
    for (const Step& step : steps)
        bytes += step.serial == 0 ? 0 : rows.Find(step.serial)->bytes.size();
    return bytes;
}

void ListPublisher::Publish(const std::vector<Step>& steps) {
    if (steps.size() > std::max(ManySteps, rows.Count() / 2) || bytesOf(steps) > LargestDelta)
        return PublishAnew();
    ++m_revision;
    sendLayouts();
    for (const Step& step : steps)
        touch(step.chunk);
    // The oldest change leaves the log: what it touched stands in chunks from now on.
    if (m_revision - m_logFrom >= LogPlaces) {
        while (!m_dirty.empty() && m_chunks[m_dirty.front()].dirtySince <= m_logFrom) {
            const quint32 chunk = m_dirty.front();
            m_dirty.pop_front();
            m_chunks[chunk].dirtySince = 0;
            sendChunk(chunk);
        }
        ++m_logFrom;
    }
    QByteArray& message = m_log[m_revision % LogPlaces];
    message = DeltaOf(steps);
    send(Topics::Numbered(m_topic + "/log", m_revision % LogPlaces), message);
    sendManifest();
}

void ListPublisher::PublishAnew() {
    m_generation = QRandomGenerator::system()->generate64();
    ++m_revision;
    m_logFrom = m_revision + 1;
    m_dirty.clear();
    rows.Deal();
    m_chunks.assign(rows.ChunkCount(), {});
    catchUp(std::nullopt);
}

void ListPublisher::StartSending(const std::optional<Manifest>& atBroker) {
    m_connection = m_bus.Connections();
    catchUp(atBroker);
}

void ListPublisher::catchUp(const std::optional<Manifest>& atBroker) {
    const LongWork::Unbroken whole;
    const bool isOurs = atBroker && atBroker->generation == m_generation && atBroker->revision <= m_revision;
    const Messages::Revision known = isOurs ? atBroker->revision : 0;
    if (atBroker)
        m_chunksAtBroker = std::max(m_chunksAtBroker, atBroker->chunks);
    if (!isOurs || atBroker->layouts != layouts.Count())
        m_layoutsSent = 0;
    sendLayouts();
    const quint32 before = m_chunksAtBroker;
    for (quint32 chunk = 0; chunk < m_chunks.size(); ++chunk) {
        StepOf(chunk, m_chunks.size());
        if (!isOurs || m_chunks[chunk].published > known)
            sendChunk(chunk);
    }
    for (Messages::Revision revision = std::max(m_logFrom, known + 1); revision <= m_revision; ++revision)
        send(Topics::Numbered(m_topic + "/log", revision % LogPlaces), m_log[revision % LogPlaces]);
    sendManifest();
    for (auto chunk = static_cast<quint32>(m_chunks.size()); chunk < before; ++chunk)
        send(Topics::Numbered(m_topic + "/chunk", chunk), {});
    if (isSending())
        m_chunksAtBroker = static_cast<quint32>(m_chunks.size());
}
