#include "workstation/recoverywriter.h"

#include "host/report/byteinput.h"

#include <QFile>
#include <QFileInfo>

#include <new>

/// After a failure nothing more is written until the next file is begun.
template <typename Write>
void RecoveryWriter::attempt(Write write) {
    if (!m_file)
        return;
    try {
        write();
        return;
    } catch (const RGException& exception) {
        m_failure = exception.GetErrorText();
    } catch (const std::bad_alloc&) {
        m_failure = m_path + QStringLiteral(": not enough memory");
    }
    m_file.reset();
}

void RecoveryWriter::write(const QByteArray& bytes) {
    m_file->Write(bytes);
    m_written += bytes.size();
}

void RecoveryWriter::Begin() {
    m_failure.clear();
    m_next.clear();
    m_past.clear();
    m_written = 0;
    try {
        m_file = std::make_unique<REPORTGENERATOR::PrivateFile>(QFileInfo(m_path).path());
    } catch (const RGException& exception) {
        m_failure = exception.GetErrorText();
    }
    attempt([this] { write(RecoveryForm::FirstLine); });
}

void RecoveryWriter::BeginSection(const RecoveryHead& head) {
    attempt([&] {
        const QByteArray line = head.ToLine();
        m_key = head.key;
        m_next[m_key].offset = m_written;
        m_hash.reset();
        m_hash.addData(line);
        write(line);
    });
}

void RecoveryWriter::Append(const QByteArray& bytes) {
    m_waiting -= bytes.size();
    if (bytes.isEmpty())
        return;
    attempt([&] {
        const QByteArray line = RecoveryForm::PieceLine(bytes.size());
        m_hash.addData(line);
        m_hash.addData(bytes);
        write(line);
        write(bytes);
    });
}

void RecoveryWriter::EndSection(qint64 entries) {
    attempt([&] {
        m_hash.addData(QByteArray::number(entries));
        write(RecoveryForm::EndLine(entries, m_hash.result().toHex()));
        Place& place = m_next[m_key];
        place.length = m_written - place.offset;
    });
}

void RecoveryWriter::KeepSection(const QString& key) {
    attempt([&] {
        constexpr qint64 BlockBytes = 1 << 20;
        const auto place = m_last.find(key);
        QFile before(m_path);
        if (place == m_last.end() || !before.open(QIODevice::ReadOnly) || !before.seek(place->second.offset))
            throw RGException(REPORTGENERATOR::ErrorText(m_path, 0, QStringLiteral("cannot be read again")));
        m_next[key] = {m_written, place->second.length};
        for (qint64 left = place->second.length; left > 0;) {
            const QByteArray block = before.read(std::min(left, BlockBytes));
            if (block.isEmpty())
                throw RGException(REPORTGENERATOR::ErrorText(m_path, 0, before.errorString()));
            write(block);
            left -= block.size();
        }
    });
}

void RecoveryWriter::Commit() {
    attempt([this] {
        for (const RecoveryPast& past : m_past)
            write(past.ToLine());
        m_file->Commit(m_path);
        m_last = m_next;
    });
    m_file.reset();
    if (m_failure.isEmpty())
        emit Done();
    else
        emit Failed(m_failure);
}

void RecoveryWriter::AddPast(const RecoveryPast& past) {
    if (m_last.contains(past.key))
        RecoveryForm::AddPast(m_path, past);
    if (m_file && m_next.contains(past.key))
        m_past.push_back(past);
}

void RecoveryWriter::Remove() {
    m_file.reset();
    m_last.clear();
    QFile::remove(m_path);
    emit Done();
}
