#pragma once

#include "host/report/recordinfo.h"
#include "host/report/rgexception.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <cmath>
#include <functional>

class QFile;
class QXmlStreamReader;
class QXmlStreamWriter;

namespace REPORTGENERATOR {

/// Base of all interchange records: a record is a value type of plain members that its RecordInfo table
/// names, and this class turns it into XML and binary forms and back from that table. Records are owned by
/// whoever declares them, observe nothing, and cost no heap while their members are empty. Empty members are
/// left out of every written form. Loading and saving throw RGException with a text "file:line: reason"; the
/// forms taken from memory answer false instead and tell the logger why.
///
/// \code
/// Band written;
/// written.name = QStringLiteral("40 m");
/// written.hertz = 7e6;
/// Band read;
/// const bool isRead = read.SetXmlString(written.GetXmlString()); // true
/// \endcode
class IRGObject {
public:
    /// Receives the reasons of refused texts and binaries.
    using Logger = std::function<void(const QString& reason)>;

    virtual ~IRGObject() = default;

    virtual const RecordInfo& GetRecordInfo() const = 0;

    /// The record's XML element name.
    QString GetObjectName() const;
    /// A number for the host's own use that the binary forms carry; 0 unless set.
    quint32 GetObjectType() const { return m_objectType; }
    void SetObjectType(quint32 type) { m_objectType = type; }
    /// Whether what is read must also pass Check(); false unless set.
    bool GetValidate() const { return m_validate; }
    void SetValidate(bool validate) { m_validate = validate; }
    /// The version of the written forms; the next one is refused by readers.
    static int GetVersion() { return 1; }

    /// Sets the logger of all objects.
    static void SetLogger(Logger logger);
    /// Back to no logger.
    static void ResetLogger();

    /// Whether any member is set.
    bool HasData() const;
    /// Whether what is set makes sense; the base asks the sub-records.
    virtual bool Check() const;
    /// Empties all members.
    void Reset();
    /// Takes over the members that are set in `other`, and appends its lists. False for another record type,
    /// and then nothing is changed.
    [[nodiscard]] bool MergeRGObject(const IRGObject& other);

    /// The record as an XML document.
    QString GetXmlString() const;
    /// Takes the record from an XML document; `validate` as SetValidate(), for this call. False when the text
    /// is no such object; the record is empty then.
    [[nodiscard]] bool SetXmlString(const QString& text, bool validate = false);

    /// Reads an XML file. Throws RGException; the record is empty then.
    void LoadXml(const QString& fileName);
    /// Reads the rest of a file that the caller opened and keeps.
    void LoadXml(QFile* file);
    /// Writes an XML file; the old one stands until the new one is complete. Throws RGException.
    void SaveXml(const QString& fileName) const;

    /// Writes the record as one element.
    void GetXml(QXmlStreamWriter& writer) const;
    /// Reads the record from the element that the reader stands at or reaches next, and leaves the reader at
    /// its end. Throws RGException.
    void ProcessXml(QXmlStreamReader& reader);

    QByteArray GetBinary() const;
    /// False when the bytes are no such object; the record is empty then.
    [[nodiscard]] bool SetBinary(const QByteArray& bytes);
    QByteArray GetCompressedBinary() const;
    [[nodiscard]] bool SetCompressedBinary(const QByteArray& bytes);
    /// Reads the rest of an open file that holds a binary of either kind. Throws RGException.
    void LoadBinary(QFile* file);
    /// Writes the compressed binary to an open file. Throws RGException.
    void SaveBinary(QFile* file) const;

    /// Members that are not set hold these markers: a number that is not finite, the least number, an empty
    /// text, an invalid time. A bool has no value to spare and is always valid.
    static bool IsValid(double value) { return std::isfinite(value); }
    static bool IsValid(int value) { return value != std::numeric_limits<int>::min(); }
    static bool IsValid(qint64 value) { return value != std::numeric_limits<qint64>::min(); }
    static bool IsValid(bool) { return true; }
    static bool IsValid(const QString& value) { return !value.isEmpty(); }
    static bool IsValid(const QDateTime& value) { return value.isValid(); }
    static bool IsValid(const Timestamp& value) { return value.IsSet(); }
    static void SetInvalid(double& value) { value = std::numeric_limits<double>::quiet_NaN(); }
    static void SetInvalid(int& value) { value = std::numeric_limits<int>::min(); }
    static void SetInvalid(qint64& value) { value = std::numeric_limits<qint64>::min(); }
    static void SetInvalid(bool& value) { value = false; }
    static void SetInvalid(QString& value) { value.clear(); }
    static void SetInvalid(QDateTime& value) { value = QDateTime(); }
    static void SetInvalid(Timestamp& value) { value = Timestamp(); }

protected:
    IRGObject() = default;
    IRGObject(const IRGObject&) = default;
    IRGObject(IRGObject&&) = default;
    IRGObject& operator=(const IRGObject&) = default;
    IRGObject& operator=(IRGObject&&) = default;

    /// Markers for member initialisers.
    static constexpr double NoNumber = std::numeric_limits<double>::quiet_NaN();
    static constexpr int NoInteger = std::numeric_limits<int>::min();
    /// The value of a member as getters give it: 0 where none is set.
    static double NumberOr0(double value) { return IsValid(value) ? value : 0.0; }
    static int NumberOr0(int value) { return IsValid(value) ? value : 0; }

private:
    void Validate(bool validate) const;

    quint32 m_objectType = 0;
    bool m_validate = false;
};

} // namespace REPORTGENERATOR
