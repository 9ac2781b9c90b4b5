#pragma once

#include <QByteArray>
#include <QString>

#include <utility>
#include <vector>

/// What a recovery file says of a list, before the list's content.
struct RecoveryHead {
    QString key;     ///< tells the list: the same at every start
    QString suffix;  ///< of a file with this content, such as ".xml"
    qint64 time = 0; ///< when the content was the list's, in microseconds since 1970-01-01 UTC
    QString file;    ///< the list's own file; empty when it has none
    /// When that file had been written last, in nanoseconds since 1970; 0 when it was not there. A file that
    /// has another time now was written after the content.
    qint64 fileTime = 0;

    QByteArray ToLine() const;
    /// False when the line says something else.
    bool FromLine(const QByteArray& line);
};

/// What is said of a list behind the sections: that its section is past.
struct RecoveryPast {
    QString key;
    /// The file that the list was about to be saved in; empty when the section is past whatever stands where.
    QString file;
    /// The time of what was to take that file's place, in nanoseconds since 1970: the section is past when
    /// the file has it.
    qint64 fileTime = 0;

    QByteArray ToLine() const;
    /// False when the line says something else, or not all of it.
    bool FromLine(const QByteArray& line);
    bool Holds() const;
};

/// The form of a recovery file: a line that says what it is, and for each list a section of a head, pieces
/// that each say how long they are, and an end with the number of entries and the SHA-256 of all before it in
/// the section. Lines may be added behind the last section that say which are past. A file that was cut or
/// damaged anywhere tells how much of it can be trusted.
namespace RecoveryForm {

inline constexpr char FirstLine[] = "freqstore recovery 1\n";
/// Of file names.
inline constexpr char Suffix[] = ".recovery";
inline constexpr char FolderName[] = "recovery";

QByteArray PieceLine(qsizetype bytes);
QByteArray EndLine(qint64 entries, const QByteArray& hash);
/// Adds a line to a recovery file, and brings it to the disk. False when it cannot be written; the file says
/// what it did before. Any thread.
bool AddPast(const QString& path, const RecoveryPast& past);

} // namespace RecoveryForm

/// One list of a recovery file.
struct RecoverySection {
    RecoveryHead head;
    qint64 entries = -1;                           ///< of a list that is not whole, those before the cut
    bool isWhole = false;                          ///< else pieces may be missing at the end, or are damaged
    std::vector<std::pair<qint64, qint64>> pieces; ///< offset and length of each in the file
    /// Its list was saved since, or the operator has decided about it.
    bool isPast = false;
    /// The file that it was saved in then; empty when there is none to be shown.
    QString savedIn;
};

/// A section of a file that another process has left, and that is done with.
struct RecoveryDone {
    QString path;
    QString key;
    bool isLast; ///< nothing else is left in the file, which goes

    void Close() const;
};

/// Reads a recovery file without holding its content.
class RecoveryReader {
public:
    explicit RecoveryReader(const QString& path);

    const QString& GetPath() const { return m_path; }
    /// The sections that there are. Of the last one of a file that was cut the beginning may be there.
    const std::vector<RecoverySection>& GetSections() const { return m_sections; }
    /// Writes the content of a section into a file, for this user only. Of a list that was cut the entries
    /// before the cut are a whole list again. Throws RGException.
    void Extract(const RecoverySection& section, const QString& path) const;

private:
    void read();
    void note(const RecoveryPast& past);
    qint64 countEntries(const RecoverySection& section) const;

    QString m_path;
    std::vector<RecoverySection> m_sections;
};
