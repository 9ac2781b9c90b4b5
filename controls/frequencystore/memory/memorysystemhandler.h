#pragma once

#include "controls/frequencystore/files/generallistparser.h"
#include "controls/frequencystore/memory/hfmemoryentry.h"
#include "controls/frequencystore/memory/rangeentries.h"
#include "controls/frequencystore/memory/vuhfmemoryentry.h"
#include "host/base/observer.h"
#include "host/valuetree/itemmap.h"
#include "host/valuetree/node.h"
#include "host/valuetree/value.h"
#include "host/valuetree/valueptr.h"

#include <QObject>

#include <memory>
#include <vector>

class FileProblems;
class HalvoNodeMediatorCtrl;
struct ReadChannel;
namespace REPORTGENERATOR {
struct DroppedEntries;
}
namespace FreqStoreXml {
class FrequencyStoreEntry;
}

/// Owner of the memory channels of one receiver, HF or VHF/UHF: it makes the channels, reads them from files,
/// and keeps them in step with the receiver's job, an XML document whose memory-scan sections list them. One
/// instance exists per process.
///
/// Each channel is a node "MemItem" under the list node. A change of the channels goes into the job in three
/// steps: whoever makes it marks the job data pending, `UpdateJobFileEntries` makes the section anew and
/// writes it into the job-data value, and the handler puts it into the job, in the job-file value. A foreign
/// change of the job-file value is a new job: its channels replace those of the list.
class MemorySystemHandler final : public QObject, public IObserver, public GeneralListParser {
    Q_OBJECT

public:
    static MemorySystemHandler* Instance();
    static void DeleteInstance();

    // Set-up, in this order.

    /// Kind of the list, before `Init`. Every type but `MemoryVUHF` makes HF channels.
    void SetListType(MediatorType type) { m_listType = type; }
    /// Once, with the list node (not owned); further calls do nothing.
    void Init(Node* root);
    bool IsAlreadyInit() const { return m_initialised; }
    /// Bind the template of new channels to the receiver's live settings. A path that names no value of the
    /// setting's type leaves the link empty: new channels then have the setting's default.
    void SetFrequency_ValuePath(const QString& path);
    void SetBandwidth_ValuePath(const QString& path);
    void SetDemodulation_ValuePath(const QString& path);
    void SetThreshold_ValuePath(const QString& path);
    void SetBFOFrequency_ValuePath(const QString& path);
    void SetOutputIF_ValuePath(const QString& path);
    void SetShift_ValuePath(const QString& path);
    void SetUseSquelch_ValuePath(const QString& path);
    void SetUseAttenuation_ValuePath(const QString& path);
    void SetAttenuation_ValuePath(const QString& path);
    void SetAntenna_ValuePath(const QString& path);
    void SetAFC_ValuePath(const QString& path);
    /// The text value that holds the whole job as XML. Its channels are read at once.
    void SetJobfile_ValuePath(const QString& path);
    /// The text value that takes the memory-scan section.
    void SetData4Jobfile_ValuePath(const QString& path);
    /// The value that triggers saving the job into its file.
    void SetSave2Job_ValuePath(const QString& path);
    /// Registers the list with the frequency store and returns its identifier there.
    int AddToFreqStore();

    bool IsVUHF() const { return m_listType == MediatorType::MemoryVUHF; }
    GeneralEntry* GetGeneralEntry() const { return m_generalEntry.get(); }
    /// The list node; null before `Init` and after the node ended.
    Node* GetItemsRoot() const { return m_root.get(); }
    /// Null before `Init`.
    HalvoNodeMediatorCtrl* GetMediatorCtrl() const { return m_pMedCtrl.get(); }
    /// The memory-scan section as it was generated last.
    QString GetData4JobFile() const { return m_jobData; }
    /// Whether the job has changed by the list since it was read or saved.
    bool IsChangedSinceJobSave() const { return m_changedSinceJobSave; }

    /// While the receiver runs a scan surveillance, no file is opened or written, and a new job in the
    /// job-file value is not read.
    bool GetInScanSurveillance() const { return m_inScanSurveillance; }
    void SetInScanSurveillance(bool on) { m_inScanSurveillance = on; }

    // New channels, at the end of the list. They mark the job data pending; a frequency of 0 leaves the
    // channel at its defaults. Frequencies, bandwidths, BFO and shift in Hz, thresholds in dBµV, attenuation
    // in dB.

    /// With the template's receiver settings, seen by the views at once.
    void SetNewEntry(double frequency, double bandwidth, const QString& comment, const QString& demodulation);
    /// Without `withReceiverSettings` the arguments behind it are not used.
    void SetNewEntryHF(double frequency, double bandwidth, const QString& comment,
                       const QString& demodulation, bool withReceiverSettings, const QString& outputIFPath,
                       long bfoFrequency, long shift, long threshold);
    void SetNewEntryVUHF(double frequency, double bandwidth, const QString& comment,
                         const QString& demodulation, bool withReceiverSettings, long attenuation,
                         long antennaId, long threshold, bool afc, bool useSquelch, bool useAttenuation);

    // The job.

    /// Freezes or resumes the views. With `markJobDataPending` the next `UpdateJobFileEntries` goes into the
    /// job: whoever changes or deletes channels says so here.
    void SuspendMediatorCtrl(bool suspend, bool markJobDataPending);
    /// Makes the memory-scan section and the map for the frequency bar anew from the channels, and hands the
    /// section on when job data is pending.
    void UpdateJobFileEntries();
    /// Writes pending job data into the job-data value and puts it into the job.
    void SetData2VT();
    /// Asks for the job to be saved; false when no value for that is bound.
    bool Save2Job();
    /// Brings the job up to date and writes it into its file, an empty job, too. Without a job-file value,
    /// without a file name and in scan surveillance nothing is written; what cannot be written is told, and
    /// the old file stays.
    void SaveData2JobFile();
    /// Name of the job's file; the job stays as it is.
    void SetJobfileName(const QString& path) { m_jobFileName = path; }
    const QString& GetJobfileName() const { return m_jobFileName; }

    /// Opens a job file: its text becomes the job, its channels the list, its name that for saving. False,
    /// told with line and reason, with job and list as they were, when it is no job or cannot be opened now.
    bool OpenJobFile(const QString& path);
    /// The same as `SaveData2JobFile` under a new name, but for a job that is empty; false, told, when the
    /// job was not written.
    bool SaveJobFile(const QString& path);
    /// Reads the channels of a job text into new channels; of the job itself when the text is empty. Channels
    /// that share a number become one with a range of frequencies. An empty job has no channels. False, with
    /// nothing added, for a text that is not well-formed, told, and when no job-file value is bound.
    bool UpdateFromJobFile(const QString& jobText);

    // Files of channels; what is read is added to the list and goes into the job.

    /// Asks for a file and reads it; the result is its path, empty when cancelled or in scan surveillance.
    QString FileOpen();
    /// Reads a file by its kind: frequency-store XML ".xml", lines ".sfl", a job ".pij". False, told, when it
    /// is of no such kind or cannot be read.
    bool ReadFile(const QString& path);
    bool ParseSFLFile(const QString& path);
    /// A job file that cannot be opened leaves the views frozen.
    bool ParseJobFile(const QString& path);
    /// Writes the channels as frequency-store XML, without receiver settings; false, told, on failure.
    bool SaveFile(const QString& path);

    void Prepare4NewFile() override;
    void ResetDataAfterNewFile() override;
    /// One channel; arguments behind the demodulation are not used.
    void FillInData(double frequency, double bandwidth, QString comment, QString demodulation, int priority,
                    QString threatClass, QString profileID, QString profileName, QString signalClass,
                    QString transmissionSystem) override;

    void Update(Observable* source, TChangeCode code) override;

protected:
    /// A new channel; the caller owns the entry object, a passing one, the tree the channel. Null without a
    /// list node.
    std::unique_ptr<HFMemoryEntry> AddHFValue();
    std::unique_ptr<VUHFMemoryEntry> AddVUHFValue();

    /// Whether a channel read from a job has that range number.
    bool RangeExists(long rangeNumber) const;
    /// The first such channel; null when there is none.
    HFMemoryEntry* GetRangeMedHF(long rangeNumber) const;
    VUHFMemoryEntry* GetRangeMedVUHF(long rangeNumber) const;

private:
    MemorySystemHandler();
    ~MemorySystemHandler() override;

    template <typename Entry>
    std::unique_ptr<Entry> addChannel(SimpleFrequency::Use use);
    void takeSentEntries();
    void addEntry(const FreqStoreXml::FrequencyStoreEntry& entry);
    void takeChannels(const std::vector<ReadChannel>& channels, FileProblems& problems);
    void takeNewChannel(const ReadChannel& channel, FileProblems& problems);
    bool readChannels(const QString& job, const QString& name);
    bool readEntries(const QString& path);
    bool collectChannels();
    void putSectionIntoJob(bool generatedHere);
    template <typename Read>
    void replaceChannels(Read read);
    void readJobAnew();
    void bringJobUpToDate();
    bool writeJob(const QString& path);
    REPORTGENERATOR::DroppedEntries dropChannelsSince(quint32 serial);
    bool takeJobFile(const QString& path, bool& isReplacing);
    REPORTGENERATOR::DroppedEntries takeJobBack(const QString& job, const QString& name);
    bool isRefused(const QString& path) const;
    QString jobName() const;

    static MemorySystemHandler* m_pInstance;

    RangeEntries<HFMemoryEntry> m_hfEntries;     ///< channels read from jobs
    RangeEntries<VUHFMemoryEntry> m_vuhfEntries; ///< channels read from jobs
    WeakRef<Node> m_root;
    std::unique_ptr<GeneralEntry> m_generalEntry;
    std::unique_ptr<HalvoNodeMediatorCtrl> m_pMedCtrl;
    bool m_changedSinceJobSave = false;
    bool m_initialised = false;
    bool m_sentEntriesCame = false; ///< from another list; the job does not have them yet
    MediatorType m_listType = MediatorType::MemoryHF;
    ValueObservingPtr<Value<QString>> m_data4Jobfile;
    ValueObservingPtr<Value<QString>> m_jobFile;
    ValueObservingPtr<ValueBase> m_save2Job;
    WeakRef<FrequencyItemMap> m_viewMap;
    bool m_jobDataPending = false;
    QString m_jobData;
    QString m_jobFileName;
    bool m_inScanSurveillance = false;
    int m_suppressingRestart = 0; ///< depth of job changes under way
    int m_sectionsInJob = 0;      ///< found by the last change of the job, see `MergeSection`
};
