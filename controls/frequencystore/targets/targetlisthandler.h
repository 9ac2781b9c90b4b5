#pragma once

#include "host/base/observer.h"
#include "host/base/traceplace.h"
#include "host/valuetree/node.h"
#include "host/valuetree/value.h"
#include "host/valuetree/valueptr.h"

#include <QObject>

#include <memory>

class TargetListParser;

/// Entry point of the local target list: owns its content, offers its file commands, loads the default list
/// at start, and publishes through two values beside the list node which file is loaded, so that a server and
/// its clients share one list. One instance exists per process.
class TargetListHandler : public QObject, public IObserver {
    Q_OBJECT

public:
    static TargetListHandler* Instance();
    static void DeleteInstance();

    /// Once, with the list node (not owned). With `loadDefault` the configured list file is read, unless a
    /// list is loaded already or this is a client.
    void Init(Node* node, bool loadDefault);
    /// As a client the handler reads no files itself; set before `Init`.
    void SetClientServer(bool client) { m_client = client; }
    bool IsClient() const { return m_client; }
    /// Why targets cannot be added, changed or removed at present; empty, as at first, when they can.
    void SetWhyNoEditing(const QString& reason) { m_whyNoEditing = reason; }
    const QString& WhyNoEditing() const { return m_whyNoEditing; }
    /// Start directory of the file dialogs.
    void SetTargetListDirectory(const QString& directory) { m_directory = directory; }

    /// Ask for a file and read it; the result is its path, empty when the dialog was cancelled. A cancelled
    /// read clears the current file name, a cancelled import changes nothing.
    QString ReadTargetList();
    QString ImportTargetList();
    /// Writes the list to the current file or asks for another one; the result is the path written, empty
    /// when cancelled or failed. A profile table that was loaded is never overwritten: "Targets.xml" is
    /// written instead.
    QString Save2File(bool toCurrentFile);
    /// Asks for a name and writes the list as CSV.
    QString Export2File();
    /// Reads a file as `ReadTargetList` does, without a dialog; false, told and traced, when it cannot be
    /// read.
    bool ReadFile(const QString& path);
    /// Writes the list to a path; false, told and traced, when it cannot be written.
    bool SaveFile(const QString& path);
    /// Writes the list to a path, which is its file from then on.
    bool SaveAsOwn(const QString& path);

    /// Paths of the receiver's values that new targets take their frequency, bandwidth (numbers, in Hz) and
    /// demodulation from; those that are empty or lead nowhere are left out.
    struct Template {
        QString frequency;
        QString bandwidth;
        QString demodulation;
    };
    void SetTemplate(const Template& paths) { m_template = paths; }
    /// Adds a target with the lowest priority and what the template says; false without a list node.
    bool AddNew();

    int AddToFreqStore();
    bool GetNextData(double& frequency, double& bandwidth, int& priority, QString& comment,
                     QString& threatClass, QString& demodulation);
    void ResetDataCollect();
    /// The list node; null before `Init` and after the node ended.
    Node* GetItemsRoot() const { return m_pNode.get(); }
    TargetListParser* GetParser() const { return m_pParser.get(); }
    const QString& GetCurrentFileName() const { return m_currentFile; }
    /// For a program that opens and saves the list by itself: the list stands in that file now.
    void NoteFile(const QString& path);

    void Update(Observable* subject, TChangeCode code) override;

signals:
    /// A new list is there: read by this handler, or announced by another instance.
    void signalNewFileLoaded();

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    TargetListHandler();
    ~TargetListHandler() override;

    bool isForeignXml(const QString& path) const;
    bool parse(TracePlace place, const QString& path, bool isProfileTable = false);
    bool isKeptOut(const QString& path) const;
    void startAnnouncing();
    void publishFileName();
    void setCurrentFile(const QString& path);

    static TargetListHandler* m_pInstance;

    bool m_client = false;
    QString m_whyNoEditing;
    bool m_loadDefault = false;
    ValueObservingPtr<Value<bool>> m_fileLoaded;
    ValueObservingPtr<Value<QString>> m_fileName;
    WeakRef<Node> m_pNode;
    QString m_directory;
    Template m_template;
    std::unique_ptr<TargetListParser> m_pParser;
    QString m_currentFile;
    int m_announceTimer = -1;
};
