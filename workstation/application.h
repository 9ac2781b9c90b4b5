#pragma once

#include "controls/frequencystore/files/filegate.h"
#include "workstation/options.h"

#include <functional>
#include <memory>
#include <vector>

class DirectoryLock;
class Ending;
class FileOpener;
class Job;
class JobPanel;
class KeySettings;
class Language;
class ListChanges;
class MainWindow;
class NoiKeeper;
class Preferences;
class ProgressBox;
class QLibrary;
class Receiver;
class ReceiverConnection;
class RecentFiles;
class Safekeeping;
class Scanning;
class ShareCommands;
class Sharing;
class SimulatedClassifier;
class SimulatedSearch;
class SweepImport;
class UnsavedWork;
struct ListFile;

/// Life of the workstation: registers the lists, loads plug-ins and files, and ends all in order. File names
/// of the options are made absolute, then the data directory becomes the current one, where the lists keep
/// files of their own.
class Workstation {
public:
    explicit Workstation(const Options& options);
    ~Workstation();

    MainWindow& GetWindow() { return *m_window; }
    Receiver& GetReceiver() { return *m_receiver; }
    ReceiverConnection& GetConnection() { return *m_connection; }
    SimulatedSearch& GetSearch() { return *m_search; }
    Scanning& GetScanning() { return *m_scanning; }
    Sharing& GetSharing() { return *m_sharing; }
    SimulatedClassifier& GetClassifier() { return *m_classifier; }
    Job& GetJob() { return *m_job; }
    Ending& GetEnding() { return *m_ending; }
    FileOpener& GetOpener() { return *m_opener; }
    /// Whether somebody sees the window and can answer; only then questions are asked. Pictures and a
    /// platform without a display have nobody, unless told otherwise.
    void SetAttended(bool attended);
    /// Reads the files of the command line and, with `--demo`, the samples. False when one could not be read
    /// or held errors.
    bool LoadFiles();
    /// Asks about lists that a process which ended has left unsaved. True when nothing was asked.
    bool OfferRecovery();
    /// Connects to the site that the command line or the settings name, if they name one.
    void BeginSharing();
    Safekeeping& GetSafekeeping() { return *m_safekeeping; }
    /// Shows ways to begin, unless the program was started before or has something to show.
    void WelcomeAtFirstStart();
    /// Writes a PNG of each tab's list and of the whole window, and prints what each list holds; false, with
    /// a message, when one cannot be written.
    bool TakeScreenshots();

private:
    void prepareDirectories();
    void addJobPanel();
    void addSweepEntry();
    void addScanning();
    void registerLists();
    bool remembers() const;
    QString fileToReopen(const QString& key) const;
    void askAndOpen();
    bool openFile(const QString& path);
    bool importFile(const QString& path);
    void openAll(const QStringList& paths);
    static bool readTargets(const QString& path);
    QString dataDirectory() const;
    void addPreferences();
    void welcome();
    void noteFile(const QString& path);
    static void useFolder(const QString& folder);
    void connectLists();
    void addWork(int listId, const QString& nodePath, std::function<bool()> isUnsaved,
                 std::function<QString()> save);
    void setSaver(int listId);
    void keepStepsOf(const ListFile& list);
    QString saveKept(const ListFile& list);
    QString saveTargets();
    int idOf(FileGate::List list) const;
    bool mayLeave(FileGate::List list);
    void fileChanged(FileGate::List list);
    void addActivities();
    QString forgetLostNoi() const;
    void lockSettings(const QString& config);
    void lockData(const QString& config);
    void tellShared();
    void leaveNoiFile();
    std::unique_ptr<NoiKeeper> makeNoiKeeper();
    bool isShared() const;
    void addSafekeeping();
    void keepOtherLists();
    void addOpener();
    void addEnding();
    void addSharing();
    ShareProfile shareAtStart() const;
    bool mayBecomeClient();
    void beginSharing();
    void endSharing(bool mirrored);
    void followRights(int listId);
    void offerSaveToJob();
    void showWriteFailure();
    void resolveWriteFailure(const QString& path);
    void registerNoi();
    void registerDetections();
    void registerResults();
    void registerMemoryChannels();
    void loadPlugIn(const QString& path);
    void readSamples();

    Options m_options;
    std::unique_ptr<Language> m_language;
    std::unique_ptr<Preferences> m_preferences;
    std::vector<std::unique_ptr<QLibrary>> m_plugIns;
    std::unique_ptr<Receiver> m_receiver;
    std::unique_ptr<SimulatedSearch> m_search;
    std::unique_ptr<SimulatedClassifier> m_classifier;
    std::unique_ptr<Job> m_job;
    std::unique_ptr<MainWindow> m_window;
    std::unique_ptr<ReceiverConnection> m_connection;
    std::unique_ptr<ProgressBox> m_progress;
    std::unique_ptr<Scanning> m_scanning;
    std::unique_ptr<SweepImport> m_sweeps;
    std::unique_ptr<ListChanges> m_changes;
    std::unique_ptr<FileOpener> m_opener;
    std::unique_ptr<UnsavedWork> m_work;
    std::unique_ptr<Ending> m_ending;
    std::unique_ptr<DirectoryLock> m_settingsLock; ///< null when the settings are nobody's to keep
    std::unique_ptr<DirectoryLock> m_lock;         ///< null when the lists' own files stay as they are
    std::unique_ptr<Safekeeping> m_safekeeping;    ///< null when nothing is to be kept
    std::unique_ptr<Sharing> m_sharing;
    std::unique_ptr<ShareCommands> m_shareCommands;
    QString m_ownTargets; ///< their file, while those of a site are to take their place
    bool m_isAttended = false;
    int m_targetsId = 0; ///< identifiers of lists in the store
    int m_noiId = 0;
    int m_memoryId = 0;
    int m_resultsId = 0;
    std::vector<int> m_detectionIds; ///< plain ones first
    JobPanel* m_jobPanel = nullptr;  ///< the window's
    RecentFiles* m_recent = nullptr; ///< the window's
    KeySettings* m_keys = nullptr;   ///< the window's
};
