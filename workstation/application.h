#pragma once

#include "workstation/options.h"

#include <memory>
#include <vector>

class Job;
class JobPanel;
class MainWindow;
class QLibrary;
class SimulatedClassifier;
class SimulatedReceiver;
class SimulatedSearch;
class SweepImport;

/// Life of the workstation: registers the lists, loads plug-ins and files, and ends all in order. File names
/// of the options are made absolute, then the data directory becomes the current one, where the lists keep
/// files of their own.
class Workstation {
public:
    explicit Workstation(const Options& options);
    ~Workstation();

    MainWindow& GetWindow() { return *m_window; }
    SimulatedReceiver& GetReceiver() { return *m_receiver; }
    SimulatedSearch& GetSearch() { return *m_search; }
    SimulatedClassifier& GetClassifier() { return *m_classifier; }
    Job& GetJob() { return *m_job; }
    /// Reads the files of the command line and, with `--demo`, the samples. False when one could not be read
    /// or held errors.
    bool LoadFiles();
    /// Writes a PNG of each tab's list and of the whole window, and prints what each list holds; false, with
    /// a message, when one cannot be written.
    bool TakeScreenshots();

private:
    void prepareDirectories();
    void addJobPanel();
    void addSweepEntry();
    void registerLists();
    void registerNoi();
    void registerDetections();
    void registerResults();
    void registerMemoryChannels();
    void loadPlugIn(const QString& path);
    void readSamples();
    void readFile(const QString& path);

    Options m_options;
    std::vector<std::unique_ptr<QLibrary>> m_plugIns;
    std::unique_ptr<SimulatedReceiver> m_receiver;
    std::unique_ptr<SimulatedSearch> m_search;
    std::unique_ptr<SimulatedClassifier> m_classifier;
    std::unique_ptr<Job> m_job;
    std::unique_ptr<MainWindow> m_window;
    std::unique_ptr<SweepImport> m_sweeps;
    JobPanel* m_jobPanel = nullptr; ///< the window's
};
