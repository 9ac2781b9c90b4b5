#pragma once

#include "controls/frequencystore/files/generallistparser.h"
#include "controls/frequencystore/targets/wkflistentry.h"
#include "host/report/readsafely.h"
#include "host/valuetree/node.h"

#include <memory>

class HalvoNodeMediatorCtrl;

/// Content of the local target list: the targets under a node of the tree, the controller that shows them,
/// and the reading and writing of target list files. Owned by the list's handler.
class TargetListParser final : public GeneralListParser {
public:
    /// The node is not owned and may end first; each target is a child node "Target" of it.
    explicit TargetListParser(Node* node);
    ~TargetListParser();

    /// A new target at the end of the list, with default values. The entry object is the caller's, the values
    /// are the tree's. Null when there is no list node.
    std::unique_ptr<WkfListEntry> AddValue();

    /// Reading a file replaces the whole list, also by nothing.
    void Prepare4NewFile() override;
    void ResetDataAfterNewFile() override;
    void FillInData(double frequency, double bandwidth, QString comment, QString demodulation, int priority,
                    QString threatClass, QString profileID, QString profileName, QString signalClass,
                    QString transmissionSystem) override;
    void FillInLine(const LineRecord& line) override;

    /// Reads a file of the kind that its path names: ".sfl", ".ltl", ".xml" or ".csv" anywhere in it, in this
    /// order, lower case. False, told and traced, when it cannot be read; a file that is unreadable as a
    /// whole leaves the list as it was.
    bool ParseSFLFile(const QString& path);
    /// Empties the list after a file whose reading had begun to fill it and has not come to its end; a list
    /// that was not yet touched stays.
    REPORTGENERATOR::DroppedEntries DropUnfinishedFile();
    /// Writes the list: as text lines when the path contains ".ltl" or ".sfl", as CSV when it contains
    /// ".csv", else as XML. False, told and traced, when it cannot be written; an old file is then left as it
    /// was. A list saved as ".sfl" and read back has comment and bandwidth exchanged: the name promises the
    /// order of one format, the content has that of the other.
    bool SaveFile(const QString& path);

    /// Walks the targets in list order; false, with all outputs 0 or empty, behind the last.
    bool GetNextData(double& frequency, double& bandwidth, int& priority, QString& comment,
                     QString& threatClass, QString& demodulation);
    /// Starts the walk anew.
    void ResetDataCollect();

    /// Registers the list with the frequency store and returns its identifier there.
    int AddToFreqStore();
    HalvoNodeMediatorCtrl* GetMediatorCtrl() const { return m_pMedCtrl.get(); }

private:
    Node* addTarget();
    void add(const WkfTarget::Content& content);
    void readEntries(const QString& path, bool csv);
    bool writeLines(const QString& path);

    WeakRef<Node> m_pNode;
    std::unique_ptr<HalvoNodeMediatorCtrl> m_pMedCtrl;
    bool m_filling = false; ///< a file's reading has begun and not ended
    unsigned m_readIndex = 0;
    unsigned m_readCount = 0;
};
