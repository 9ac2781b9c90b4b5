#pragma once

#include "controls/frequencystore/common/generalentry.h"
#include "controls/frequencystore/files/generallistparser.h"
#include "host/base/observer.h"
#include "host/report/readsafely.h"
#include "host/valuetree/node.h"
#include "host/valuetree/valueptr.h"

#include <QObject>

#include <functional>
#include <memory>

class FrequencyNodeMediator;
class HalvoNodeMediatorCtrl;
class NOIFrequency;

/// Owner of the list of frequencies of interest (NOI): its entries, its files, the controller that shows it,
/// and the band list, a text value that tells other parts of the system lower and upper edge of each entry.
/// One instance exists per process.
///
/// The list remembers its file: it is read again at the next start and saved at the end. What could not be
/// read is never overwritten without being asked for.
class NOIFrequencyHandler : public QObject, public IObserver, public GeneralListParser {
    Q_OBJECT

public:
    static NOIFrequencyHandler* Instance();
    /// Saves the list to its file, keeps the file's name for the next start, and ends the handler.
    static void DeleteInstance();

    /// Without this the list neither reads its remembered file nor saves itself at the end: for programs that
    /// work on the files that they are given. Set before `Init`.
    void SetRemembersFile(bool remembers) { m_remembersFile = remembers; }
    /// Once, with the list node (not owned, may end first). Reads the remembered file.
    void Init(Node* listNode);
    int AddToFreqStore();

    /// The dialogs start in the program's current directory whatever is set here.
    void SetReadDirectory(const QString& directory);
    /// Bind new entries to the receiver's settings at these paths.
    void SetFrequencyValue_Path(const QString& path);
    void SetBandwidthValue_Path(const QString& path);
    /// Binds the value that takes the band list, and writes it.
    void SetNOIDefinition_ValuePath(const QString& path);

    /// Ask for a file and read it; the result is the name chosen. A line file becomes the current one, also
    /// when it could not be read; an XML file does not. Cancelling forgets the current file.
    QString FileOpen();
    QString FileImport();
    /// Writes the list to the current file, or asks for another one; the result is the name written, empty
    /// when cancelled, failed, or when there is nothing to write (an empty list gives no XML file).
    /// Cancelling forgets the current file.
    QString FileSave(bool automatic);
    /// Asks for a name and writes the list as CSV; the result is the name written, else empty.
    QString FileExport();

    /// Replace the list by the file's content. False, told and traced, when it cannot be read.
    bool ParseNOIFile(const QString& path);
    /// An XML file, or CSV when the path says so. One that cannot be read leaves an empty list that waits for
    /// the next file: until one is read, the controller follows nothing.
    bool ParseNOIXmlFile(const QString& path);
    /// Reads any file of the list by the kind that its name tells, without a dialog, with the effects of
    /// `FileOpen` or, for CSV, of `FileImport`. False, told and traced, when it cannot be read; CSV that is
    /// refused leaves the list as it was.
    bool ReadFile(const QString& path);
    /// Writes the list as the name tells: text lines for ".noi", CSV for ".csv", else XML. False, told and
    /// traced, when it cannot be written; an old file is then left as it was.
    bool SaveFile(const QString& path);

    /// Adds one entry at the end. With a frequency of 0 or less it keeps the values of a new entry.
    bool InsertNewValue(double frequency, double bandwidth, const QString& comment);
    /// Brings the controller up to date and writes the band list anew: "lower,upper;" in whole hertz for each
    /// entry, in list order. Does nothing without a value for it, and while a file is read.
    void UpdateNOIList();
    GeneralEntry* GetGeneralEntry() { return &m_template; }

    /// The list node; null before `Init` and after the node ended.
    Node* GetItemsRoot() const { return m_pNode.get(); }
    HalvoNodeMediatorCtrl* GetMediatorCtrl() const { return m_pMedCtrl.get(); }
    const QString& GetCurrentFileName() const { return m_currentFile; }
    /// Lets saves go into another file from now on, since the list's own belongs to another program.
    void SetCurrentFileName(const QString& path) { m_currentFile = path; }
    /// Whether the list waits for a file because the last one could not be read.
    bool IsWaitingForFile() const;

    void Prepare4NewFile() override;
    void ResetDataAfterNewFile() override;
    void FillInData(double frequency, double bandwidth, QString comment, QString demodulation, int priority,
                    QString threatClass, QString profileID, QString profileName, QString signalClass,
                    QString transmissionSystem) override;

    void Update(Observable* subject, TChangeCode code) override;

signals:
    /// A file has been read.
    void signalNewFileLoaded();

protected:
    /// A new entry at the end of the list, with the values that the receiver gives it; null without a list.
    NOIFrequency AddValue(Node& list);
    /// The line of an entry in a text file; empty when it lacks frequency, bandwidth or comment.
    QString GetString(FrequencyNodeMediator* mediator);

private:
    enum class Saved { Written, Nothing, Failed };

    /// Entries of the file that is read of which something is to be told; the first of each by its number.
    struct Doubtful {
        void Take(double frequency, double bandwidth);

        qint64 entries = 0;
        qint64 negative = 0; ///< frequencies that the list does not keep
        qint64 withoutFrequency = 0;
        qint64 firstWithoutFrequency = 0;
        qint64 belowZero = 0; ///< bands that begin below 0 Hz
        qint64 firstBelowZero = 0;
    };

    static constexpr char TraceSource[] = "listviewshandler";
    /// Where the list is kept when no file was chosen for it, or none that it may overwrite.
    static constexpr char DefaultFile[] = "NoiFrequencies.xml";
    static constexpr char RememberedFile[] = "NOIFrequencies"; ///< the setting with the file's name

    NOIFrequencyHandler();
    ~NOIFrequencyHandler() override;

    void keepFileForUndo();
    bool insert(double frequency, double bandwidth, const QString& comment);
    bool readEntries(const QString& path, bool tell);
    bool openXml(const QString& path);
    bool readSafely(const QString& path, const std::function<bool()>& read);
    REPORTGENERATOR::DroppedEntries dropUnfinishedFile(const QString& path);
    bool openLines(const QString& path);
    bool readTable(const QString& path);
    static bool isKeptOut(const QString& path);
    QString takeFile(const QString& path, const std::function<bool()>& read);
    void noteContent(const QString& path, bool isWhole);
    void tellDoubtful(const QString& path);
    bool mustNotOverwrite() const;
    QString nameForAutomaticSave();
    void saveAtTheEnd();
    Saved saveAutomatically();
    Saved saveTo(const QString& path);
    bool writeLines(const QString& path);
    bool readByName(const QString& path);
    bool tryToWriteEntries(const QString& path, bool csv);
    bool writeEntries(const QString& path, bool csv);

    static NOIFrequencyHandler* m_pInstance;

    WeakRef<Node> m_pNode;
    QString m_readDirectory;
    QString m_currentFile;
    ValueObservingPtr<ValueBase> m_definition;
    GeneralEntry m_template;
    std::unique_ptr<HalvoNodeMediatorCtrl> m_pMedCtrl;
    bool m_ready = true;    ///< no file is being read
    bool m_filling = false; ///< a file's reading has begun and not ended

    Doubtful m_doubtful;
    bool m_remembersFile = true;
    bool m_incomplete = false;  ///< the list was emptied for a file that could not be read
    QString m_unreadFile;       ///< a file of which not all has reached the list
    bool m_updateIsDue = false; ///< entries came that are not in the band list yet
};
