#pragma once

#include <QString>

#include <functional>

class FileProblems;
class QDomElement;
class QDomNode;
struct LineLayout;
struct LineRecord;

namespace FreqStoreXml {
class FrequencyStoreEntry;
}

/// What every file reader needs of a list: it brackets a file and takes its records one by one. Owners
/// destroy the concrete lists.
class GeneralListParser {
public:
    /// Before the first record of a file.
    virtual void Prepare4NewFile() = 0;
    /// After the last record of a file that was read to its end.
    virtual void ResetDataAfterNewFile() = 0;
    /// One record. Frequency and bandwidth in the unit of the file (Hz in all formats of this system);
    /// priority 1 is the highest, 10 the lowest.
    virtual void FillInData(double frequency, double bandwidth, QString comment, QString demodulation,
                            int priority, QString threatClass, QString profileID, QString profileName,
                            QString signalClass, QString transmissionSystem) = 0;

    /// One record of a file of lines. A list with very many of them takes what it needs and makes no copies;
    /// others get it as any record.
    virtual void FillInLine(const LineRecord& line);

    /// Reads a profile table: XML with elements "PROFILETBL", each of which has objects with priorities and
    /// parameter sets with frequencies. Every parameter set is a record. A file that cannot be opened is
    /// told and traced and changes nothing; an unreadable document, or one without profiles, is told and
    /// yields no records. False in all these cases.
    bool ParseProfileTable(const QString& path);
    /// Takes the entries that `read` hands on, as those of a file of that name. They are read to the end
    /// before the list is touched: when `read` throws RGException, or memory runs out, the list stays as it
    /// is, and that is told: false.
    bool TakeEntries(
        const QString& path,
        const std::function<void(const std::function<void(const FreqStoreXml::FrequencyStoreEntry&)>&)>&
            read);

protected:
    ~GeneralListParser() = default;

    /// Reads a file of lines with fields at these places. Lines of fewer than two characters are passed over.
    /// A file that cannot be opened or is no text is told and traced, and changes nothing: false. `sound`,
    /// when given, says whether every line was read as it stands.
    bool ReadLines(const QString& path, const LineLayout& layout, bool* sound = nullptr);
    /// Hands on one entry of an interchange list as a record.
    void FillInEntry(const FreqStoreXml::FrequencyStoreEntry& entry);

private:
    void fillInProfiles(QStringView element, FileProblems& problems);
    void fillInProfile(const QDomElement& profile, FileProblems& problems);
};

/// The first child of `parent` with that tag; a null node when there is none.
QDomNode FirstChildOfName(const QDomNode& parent, const QString& tag);
