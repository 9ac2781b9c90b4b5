#pragma once

#include "cli/list.h"

/// The memory channels of a receiver and its job, which lives in the tree as in the workstation.
class MemoryList : public CliList {
public:
    explicit MemoryList(bool vuhf);
    ~MemoryList() override;

    const FileNames& Names() const override;

    /// Opens a job: its channels are the list. False, told, when it is none.
    bool OpenJob(const QString& path);
    /// Takes all channels out of the list.
    void Clear();
    /// Writes the job with the channels of the list; false, told, when it cannot be.
    bool SaveJob(const QString& path);
    /// The job takes the channels anew.
    void EntriesChanged() override;

protected:
    /// Adds the channels of a file to the list.
    bool ReadFile(const QString& path) override;
    bool WriteFile(const QString& path) override;
    void BeginEntries() override;
    void EndEntries(bool isWhole) override;
    void AddEntry(const Interchange::JsonEntry& from) override;
    Node* GetNode() const override { return m_node; }
    EntryNodes GetEntryNodes() const override;
    GeneralListParser* Parser() const override;
    HalvoNodeMediatorCtrl* Controller() const override;

private:
    Node* m_node;
};
