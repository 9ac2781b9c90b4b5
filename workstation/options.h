#pragma once

#include "receiver/receiversettings.h"
#include "workstation/shareprofile.h"

#include <QStringList>

class QCommandLineParser;

/// What the command line asks of the workstation. Names of files and plug-ins are absolute.
struct Options {
    QString dataDirectory;
    QString configDirectory;
    QString screenshotDirectory;
    QString jobFile;
    QString language; ///< "de"; empty for that of the settings
    ReceiverKind receiver = ReceiverKind::HF;
    QString radio;      ///< what to connect, as `ReceiverChoice` takes it; empty for the simulated receiver
    ShareProfile share; ///< what to take part in; without a url what the settings say
    unsigned traceMask = 0;
    bool demo = false;
    bool takesGuide = false; ///< pictures of the guide go into the folder of screenshots, with the samples
    bool timesStart = false; ///< ends after the first paint, see FirstPaint
    QStringList plugIns;     ///< shared libraries that register lists of their own
    QStringList files;       ///< read by whoever knows their kinds

    /// Parses the arguments; on a wrong one `error` says what is wrong. Help and version end the program.
    static Options Parse(const QStringList& arguments, QString& error);

private:
    void takeReceiver(const QString& name, QString& error);
    void takeShare(const QCommandLineParser& parser, QString& error);
};
