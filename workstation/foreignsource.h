#pragma once

#include "host/base/problems.h"
#include "host/freqstorexml/stagedentries.h"
#include "interchange/format.h"
#include "interchange/table.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <vector>

/// What reading a file of another program gives.
struct ForeignReading {
    static constexpr size_t MostFirst = 50;

    FreqStoreXml::StagedEntries entries;
    std::vector<FreqStoreXml::FrequencyStoreEntry> first; ///< the first of them
    Interchange::Account account;
    std::vector<Problem> problems; ///< as they were told; not yet to the operator
    QString
        failure; ///< "file:line: reason" of a file that cannot be read to its end; there are no entries then
};

/// A file of another program, or a text that was pasted: one of the known formats, or else a table.
class ForeignSource {
public:
    explicit ForeignSource(const QString& path);
    static ForeignSource OfText(const QString& text);

    bool IsTable() const { return !m_format; }
    /// Whether its entries are on air at times.
    bool HasSchedule() const;
    /// The file's name with its path; that of pasted text in the operator's words.
    const QString& Path() const { return m_path; }
    /// The file's name as it is shown.
    QString ShownName() const;
    /// The format's name; "a table".
    QString KindName() const;

    /// Looks at the beginning of a table; throws RGException.
    Interchange::TableLook LookAtTable(const Interchange::TableHints& hints = {}) const;
    /// Reads all of it; the choice is that of a table. Tells nothing and never throws: what is wrong stands
    /// in the answer.
    std::unique_ptr<ForeignReading> Read(const Interchange::ReadOptions& options,
                                         const Interchange::TableChoice& choice = {}) const;

private:
    ForeignSource() = default;
    Interchange::Account read(const Interchange::ReadOptions& options, const Interchange::TableChoice& choice,
                              const Interchange::TakeEntry& take) const;

    QString m_path;
    QByteArray m_text; ///< of pasted text, in UTF-8
    bool m_isText = false;
    const Interchange::Format* m_format = nullptr;
};
