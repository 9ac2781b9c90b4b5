#pragma once

#include "host/freqstorexml/detectionresult.h"
#include "host/freqstorexml/frequencystorelist.h"

namespace FreqStoreXml {

/// A list of detected emissions as it stands in files; owns its results.
class DetectionResultList final : public REPORTGENERATOR::IRGObject {
public:
    DetectionResultList();

    const REPORTGENERATOR::RecordInfo& GetRecordInfo() const override;

    FrequencyStoreList::Usage GetUsage() const {
        return static_cast<FrequencyStoreList::Usage>(m_usage.value);
    }
    /// A number without a name counts as Unspecified.
    void SetUsage(int usage);

    /// Identifier of the list.
    const QString& GetID() const { return m_id; }
    void SetID(const QString& value) { m_id = value; }

    /// Type letter of the list.
    const QString& GetType() const { return m_type; }
    void SetType(const QString& value) { m_type = value; }

    /// What the list holds, in words.
    const QString& GetComment() const { return m_comment; }
    void SetComment(const QString& value) { m_comment = value; }

    QVector<DetectionResult>& GetDetectionResult() { return m_results.items; }
    const QVector<DetectionResult>& GetDetectionResult() const { return m_results.items; }
    void AppendDetectionResult(const DetectionResult& result) { m_results.items.append(result); }

private:
    REPORTGENERATOR::NamedNumber m_usage;
    QString m_id;
    QString m_type;
    QString m_comment;
    REPORTGENERATOR::ObjectList<DetectionResult> m_results;
};

} // namespace FreqStoreXml
