#include "workstation/foreignsource.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QFileInfo>
#include <QScopeGuard>

namespace {

constexpr qsizetype HeadSize = 64 * 1024; ///< characters of a text that tell its format

} // namespace

ForeignSource::ForeignSource(const QString& path) : m_path(path), m_format(Interchange::FormatOfFile(path)) {}

ForeignSource ForeignSource::OfText(const QString& text) {
    ForeignSource source;
    source.m_path = QCoreApplication::translate("ForeignImport", "Pasted text");
    source.m_text = text.toUtf8();
    source.m_isText = true;
    source.m_format = Interchange::FormatOfText(text.left(HeadSize));
    return source;
}

bool ForeignSource::HasSchedule() const {
    return m_format && m_format->hasSchedule;
}

QString ForeignSource::ShownName() const {
    return m_isText ? m_path : QFileInfo(m_path).fileName();
}

QString ForeignSource::KindName() const {
    return m_format ? m_format->Name() : QCoreApplication::translate("ForeignImport", "a table");
}

Interchange::TableLook ForeignSource::LookAtTable(const Interchange::TableHints& hints) const {
    if (!m_isText)
        return Interchange::LookAtTable(m_path, hints);
    QByteArray bytes = m_text;
    QBuffer device(&bytes);
    device.open(QIODevice::ReadOnly);
    return Interchange::LookAtTable(device, m_path, hints);
}

Interchange::Account ForeignSource::read(const Interchange::ReadOptions& options,
                                         const Interchange::TableChoice& choice,
                                         const Interchange::TakeEntry& take) const {
    if (!m_isText)
        return m_format ? Interchange::Read(*m_format, m_path, options, take)
                        : Interchange::ReadTable(m_path, choice, options, take);
    QByteArray bytes = m_text;
    QBuffer device(&bytes);
    device.open(QIODevice::ReadOnly);
    return m_format ? Interchange::Read(*m_format, device, m_path, options, take)
                    : Interchange::ReadTable(device, m_path, choice, options, take);
}

std::unique_ptr<ForeignReading> ForeignSource::Read(const Interchange::ReadOptions& options,
                                                    const Interchange::TableChoice& choice) const {
    auto reading = std::make_unique<ForeignReading>();
    const Problems::Sink before =
        Problems::SetSink([&reading](const Problem& problem) { reading->problems.push_back(problem); });
    const auto giveBack = qScopeGuard([&before] { Problems::SetSink(before); });
    try {
        reading->entries.Read(m_path, [&](const FreqStoreXml::EntryCallback& append) {
            reading->account = read(options, choice, [&](const FreqStoreXml::FrequencyStoreEntry& entry) {
                if (reading->first.size() < ForeignReading::MostFirst)
                    reading->first.push_back(entry);
                append(entry);
            });
        });
    } catch (const RGException& exception) {
        reading->failure = exception.GetErrorText();
    }
    return reading;
}
