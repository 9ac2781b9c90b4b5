#pragma once

#include "workstation/receiversettings.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

class MainWindow;
class QLibrary;
class SimulatedReceiver;

/// What the command line asks of the workstation.
struct Options {
    QString dataDirectory;
    QString configDirectory;
    QString screenshotDirectory;
    ReceiverKind receiver = ReceiverKind::HF;
    unsigned traceMask = 0;
    bool demo = false;
    QStringList plugIns; ///< shared libraries that register lists of their own
    QStringList files;   ///< read into the lists that know their kinds

    /// Parses the arguments; on a wrong one `error` says what is wrong. Help and version end the program.
    static Options Parse(const QStringList& arguments, QString& error);
};

/// Life of the workstation: registers the lists, loads plug-ins and files, and ends all in order. File names
/// of the options are made absolute, then the data directory becomes the current one, where the lists keep
/// files of their own.
class Workstation {
public:
    explicit Workstation(const Options& options);
    ~Workstation();

    MainWindow& GetWindow() { return *m_window; }
    SimulatedReceiver& GetReceiver() { return *m_receiver; }
    /// Reads the files of the command line and, with `--demo`, the samples. False when one could not be read
    /// or held errors.
    bool LoadFiles();
    /// Writes a PNG of each tab's list and of the whole window, and prints what each list holds; false, with
    /// a message, when one cannot be written.
    bool TakeScreenshots();

private:
    void prepareDirectories();
    void registerLists();
    void loadPlugIn(const QString& path);

    Options m_options;
    std::vector<std::unique_ptr<QLibrary>> m_plugIns;
    std::unique_ptr<SimulatedReceiver> m_receiver;
    std::unique_ptr<MainWindow> m_window;
};
