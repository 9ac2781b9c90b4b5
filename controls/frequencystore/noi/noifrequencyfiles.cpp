#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/files/filegate.h"
#include "controls/frequencystore/files/filekind.h"
#include "controls/frequencystore/files/linefields.h"
#include "controls/frequencystore/files/linewriter.h"
#include "controls/frequencystore/noi/noidialogs.h"
#include "controls/frequencystore/noi/noifrequencyhandler.h"
#include "host/base/longwork.h"
#include "host/base/numbers.h"
#include "host/base/problems.h"
#include "host/base/tokenizer.h"
#include "host/base/trace.h"
#include "host/freqlist/frequencynodemediator.h"
#include "host/freqlist/listsaving.h"
#include "host/freqstorexml/filehandling.h"
#include "host/freqstorexml/liststreams.h"
#include "host/freqstorexml/stagedentries.h"
#include "host/report/filework.h"
#include "host/startup/cfgcenter.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QPointer>

using FreqStoreXml::FileHandling;
using FreqStoreXml::FrequencyStoreEntry;
using FreqStoreXml::FrequencyStoreList;
using FreqStoreXml::FrequencyStoreListHelper;

namespace {

constexpr char TypeOfOthers = 'd'; ///< of entries without a type, which all entries of this list are

/// Traces a heading and the exception's text; tells the operator, too, when asked to.
void traceException(TracePlace place, const char* heading, const RGException& exception, bool tell) {
    TraceLazily(place, [heading] { return QString::fromLatin1(heading); });
    if (tell) // traces the text as well
        Problems::Report(place, Problem::FromText(exception.GetErrorText()));
    else
        TraceLazily(place, [&] { return exception.GetErrorText(); });
}

} // namespace

/// Every reading of a file runs in here. One that is cancelled leaves what is known of files as it was.
bool NOIFrequencyHandler::readSafely(const QString& path, const std::function<bool()>& read) {
    const QString unread = m_unreadFile;
    const QString current = m_currentFile;
    const bool incomplete = m_incomplete;
    try {
        return REPORTGENERATOR::ReadSafely(TraceSource, path, read, [&] { return dropUnfinishedFile(path); });
    } catch (const WorkCancelled&) {
        m_doubtful = {};
        m_unreadFile = unread;
        m_currentFile = current;
        m_incomplete = incomplete;
        throw;
    }
}

REPORTGENERATOR::DroppedEntries NOIFrequencyHandler::dropUnfinishedFile(const QString& path) {
    if (!m_filling)
        return {};
    const auto count = m_pNode ? static_cast<qint64>(m_pNode->ChildCount()) : 0;
    Prepare4NewFile();
    noteContent(path, false);
    m_filling = false;
    m_ready = true;
    if (m_pMedCtrl)
        m_pMedCtrl->Suspend(false);
    UpdateNOIList();
    return {count, true};
}

bool NOIFrequencyHandler::ParseNOIFile(const QString& path) {
    if (path.isEmpty()) { // a cancelled dialog, of which the operator need not be told
        TraceLazily(TraceSource, [] { return QStringLiteral("File cannot be opened: "); });
        return false;
    }
    const QPointer<NOIFrequencyHandler> alive(this);
    bool sound = true;
    const bool read = readSafely(path, [&] { return ReadLines(path, NoiLayout, &sound); });
    if (alive) {
        noteContent(path, read && sound);
        tellDoubtful(path);
    }
    return read;
}

bool NOIFrequencyHandler::ParseNOIXmlFile(const QString& path) {
    return readSafely(path, [&] { return readEntries(path, true); });
}

bool NOIFrequencyHandler::readEntries(const QString& path, bool tell) {
    Prepare4NewFile();
    try {
        FreqStoreXml::StagedEntries entries;
        entries.Read(path, PathContains(path, ".csv"), FrequencyStoreListHelper::NoiFrequencies);
        entries.Drain([this](const FrequencyStoreEntry& entry) { FillInEntry(entry); });
    } catch (const REPORTGENERATOR::NotEnoughMemory&) {
        throw;
    } catch (const RGException& exception) {
        traceException(TraceSource, "EXCEPTION WHILE PARSING FREQUENCIES:", exception, tell);
        noteContent(path, false);
        if (m_pMedCtrl) { // views follow once more: they show an empty list, not rows of what has gone
            m_pMedCtrl->Suspend(false);
            m_pMedCtrl->Suspend(true);
        }
        return false;
    }
    noteContent(path, m_doubtful.negative == 0);
    tellDoubtful(path);
    ResetDataAfterNewFile();
    return true;
}

/// Tells what the entries of the file that was read last are not as they stand there, or make of the band
/// list.
void NOIFrequencyHandler::tellDoubtful(const QString& path) {
    const auto tell = [&](qint64 count, qint64 first, const QString& what) {
        if (count > 0)
            Problems::Report(TraceSource,
                             {path, 0,
                              QCoreApplication::translate("Readers", "%1, the first is number %2")
                                  .arg(what.arg(count))
                                  .arg(first)});
    };
    const Doubtful found = std::exchange(m_doubtful, {});
    tell(found.withoutFrequency, found.firstWithoutFrequency,
         QCoreApplication::translate(
             "Readers", "entries without a frequency above 0 have the values of a new entry: %1"));
    tell(found.belowZero, found.firstBelowZero,
         QCoreApplication::translate("Readers", "bands that begin below 0 Hz: %1"));
}

/// Counts what is to be told of an entry of a file.
void NOIFrequencyHandler::Doubtful::Take(double frequency, double bandwidth) {
    ++entries;
    negative += frequency < 0 ? 1 : 0;
    if (frequency <= 0 && withoutFrequency++ == 0)
        firstWithoutFrequency = entries;
    else if (frequency > 0 && frequency - bandwidth / 2 < 0 && belowZero++ == 0)
        firstBelowZero = entries;
}

/// A file that is no frequency-store list is a profile table. One that is a list, and bad half-way, holds no
/// profiles either: of what is wrong only the first is told.
bool NOIFrequencyHandler::openXml(const QString& path) {
    const QPointer<NOIFrequencyHandler> alive(this);
    const bool isList = FileHandling().IsValidFormat(path);
    if (readSafely(path, [&] { return readEntries(path, isList); }))
        return true;
    bool read = false;
    if (isList) {
        Prepare4NewFile();
        ResetDataAfterNewFile();
    } else {
        read = readSafely(path, [&] { return ParseProfileTable(path); });
    }
    if (alive) {
        m_incomplete = !read;
        tellDoubtful(path);
    }
    return read;
}

bool NOIFrequencyHandler::openLines(const QString& path) {
    const QPointer<NOIFrequencyHandler> alive(this);
    const bool read = ParseNOIFile(path);
    if (alive)
        m_currentFile = path;
    return read;
}

/// Remembers a file that is not whole in the list, until it is.
void NOIFrequencyHandler::noteContent(const QString& path, bool isWhole) {
    if (!isWhole)
        m_unreadFile = path;
    else if (m_unreadFile == path)
        m_unreadFile.clear();
}

bool NOIFrequencyHandler::ReadFile(const QString& path) {
    return REPORTGENERATOR::ReadAsWork(path, [&] { return readByName(path); });
}

bool NOIFrequencyHandler::readByName(const QString& path) {
    bool read = false;
    if (PathContains(path, ".xml"))
        read = openXml(path);
    else if (PathContains(path, ".csv"))
        read = readTable(path);
    else if (PathContains(path, ".noi"))
        read = openLines(path);
    else
        Problems::Report(TraceSource,
                         {path, 0, QCoreApplication::translate("Readers", "is of no known kind of file")});
    FileGate::WasRead(FileGate::List::Noi, path, read);
    return read;
}

/// Reading empties the list first: a table that cannot be read must not get that far.
bool NOIFrequencyHandler::readTable(const QString& path) {
    const QString refusal = FileHandling::WhyNotReadable(path);
    if (refusal.isEmpty())
        return ParseNOIXmlFile(path);
    Problems::Report(TraceSource, Problem::FromText(refusal));
    return false;
}

/// Whether the program keeps a chosen file from the list.
bool NOIFrequencyHandler::isKeptOut(const QString& path) {
    return !path.isEmpty() && !FileGate::MayRead(FileGate::List::Noi, path);
}

QString NOIFrequencyHandler::FileOpen() {
    // Whoever ends the application while a dialog is open, or on hearing of the new list, ends this, too.
    const QPointer<NOIFrequencyHandler> alive(this);
    const QString path = NoiDialogs::FileToOpen(m_readDirectory);
    if (!alive)
        return path;
    return takeFile(path, [&] { return PathContains(path, ".xml") ? openXml(path) : openLines(path); });
}

QString NOIFrequencyHandler::FileImport() {
    const QPointer<NOIFrequencyHandler> alive(this);
    const QString path = NoiDialogs::FileToImport(m_readDirectory);
    if (!alive)
        return path;
    return takeFile(path, [&] { return PathContains(path, ".csv") && ParseNOIXmlFile(path); });
}

/// Reads a chosen file, unless it must not be or the operator cancels: then the answer is empty.
QString NOIFrequencyHandler::takeFile(const QString& path, const std::function<bool()>& read) {
    const QPointer<NOIFrequencyHandler> alive(this);
    if (isKeptOut(path) || !alive)
        return QString();
    const auto take = [&] {
        const bool wasRead = read();
        if (alive)
            m_ready = true;
        if (!path.isEmpty())
            FileGate::WasRead(FileGate::List::Noi, path, wasRead);
        return true;
    };
    return REPORTGENERATOR::ReadAsWork(path, take) ? path : QString();
}

/// Whether the current file holds entries that this list has never had, or has lost by a failed read.
bool NOIFrequencyHandler::mustNotOverwrite() const {
    return (m_incomplete || m_currentFile == m_unreadFile) && QFileInfo::exists(m_currentFile);
}

/// A file that is no list, such as a profile table, is not overwritten by an automatic save, nor is one that
/// could not be read whole.
QString NOIFrequencyHandler::nameForAutomaticSave() {
    if (PathContains(m_currentFile, ".xml") && !FileHandling().IsValidFormat(m_currentFile))
        m_currentFile = QString::fromLatin1(DefaultFile);
    if (!mustNotOverwrite())
        return m_currentFile;
    const QString standard = QString::fromLatin1(DefaultFile);
    const QString other = QFileInfo::exists(standard) ? REPORTGENERATOR::FreeNameBeside(standard) : standard;
    if (m_pMedCtrl->size() > 0)
        Problems::Report(TraceSource,
                         {m_currentFile, 0,
                          QCoreApplication::translate(
                              "Readers", "could not be read whole and is kept; the list is saved as ") +
                              other});
    return other;
}

QString NOIFrequencyHandler::FileSave(bool automatic) {
    const QPointer<NOIFrequencyHandler> alive(this);
    const QString path = automatic ? QString() : NoiDialogs::FileToSave(m_readDirectory);
    if (!alive || !m_pMedCtrl)
        return QString();
    const Saved saved = automatic ? saveAutomatically() : saveTo(path);
    if (saved == Saved::Nothing && !path.isEmpty())
        Problems::Report(
            TraceSource,
            {path, 0, QCoreApplication::translate("Readers", "is not written: the list is empty")});
    return saved == Saved::Written ? m_currentFile : QString();
}

NOIFrequencyHandler::Saved NOIFrequencyHandler::saveAutomatically() {
    // A list whose node has gone is not empty, it is not there.
    return m_pNode ? saveTo(nameForAutomaticSave()) : Saved::Failed;
}

NOIFrequencyHandler::Saved NOIFrequencyHandler::saveTo(const QString& path) {
    if (path.isEmpty()) {
        m_currentFile.clear();
        return Saved::Nothing;
    }
    m_pMedCtrl->ForceUpdateNow();
    const bool lines = PathContains(path, ".noi");
    if (!lines && m_pMedCtrl->size() == 0)
        return Saved::Nothing;
    if (!ListSaving::Do(m_pMedCtrl.get(),
                        [&] { return lines ? writeLines(path) : writeEntries(path, false); }))
        return Saved::Failed;
    m_currentFile = path;
    m_incomplete = false;
    noteContent(path, true);
    FileGate::WasWritten(FileGate::List::Noi, path);
    return Saved::Written;
}

/// The name of an empty list's XML file is forgotten, since that file still holds what was removed from the
/// list. The name of one that could not be read or written stays: it may be sound the next time.
void NOIFrequencyHandler::saveAtTheEnd() {
    if (!m_remembersFile || !m_pMedCtrl)
        return;
    const QString before = m_currentFile;
    const bool isKept = mustNotOverwrite();
    const Saved saved = saveAutomatically();
    const QString remembered = saved == Saved::Written              ? m_currentFile
                               : saved == Saved::Nothing && !isKept ? QString()
                                                                    : before;
    CfgCenter::GetAppCfg(ICfg::Shutdown).SetString(QString::fromLatin1(RememberedFile), remembered);
}

bool NOIFrequencyHandler::SaveFile(const QString& path) {
    if (!m_pMedCtrl)
        return false;
    m_pMedCtrl->ForceUpdateNow();
    if (PathContains(path, ".noi"))
        return writeLines(path);
    return writeEntries(path, PathContains(path, ".csv"));
}

QString NOIFrequencyHandler::FileExport() {
    const QPointer<NOIFrequencyHandler> alive(this);
    const QString path = NoiDialogs::FileToExport(m_readDirectory);
    if (!alive || !m_pMedCtrl || !PathContains(path, ".csv"))
        return QString();
    m_pMedCtrl->ForceUpdateNow();
    return writeEntries(path, true) ? path : QString();
}

bool NOIFrequencyHandler::writeEntries(const QString& path, bool csv) {
    return REPORTGENERATOR::WriteAsWork(path, [&] { return tryToWriteEntries(path, csv); });
}

bool NOIFrequencyHandler::tryToWriteEntries(const QString& path, bool csv) {
    try {
        FreqStoreXml::FrequencyStoreListWriter writer(
            path, csv, csv ? FrequencyStoreListHelper::NoiFrequencies : FrequencyStoreListHelper::XmlList);
        writer.Begin(FrequencyStoreList::Noi);
        FrequencyStoreList one;
        m_pMedCtrl->ForEachInWork([&](FrequencyNodeMediator& mediator) {
            mediator.AddToXml(one);
            FrequencyStoreEntry& entry = one.GetFrequencyStoreEntry().last();
            if (entry.GetType().isEmpty())
                entry.SetType(QString(QLatin1Char(TypeOfOthers)));
            entry.GetFFM_Settings().SetAnalogDemod({}); // bands have none, whatever else their nodes hold
            writer.Append(entry);
            one.GetFrequencyStoreEntry().resize(0);
        });
        writer.Commit();
        return true;
    } catch (const RGException& exception) {
        traceException(TraceSource,
                       csv ? "EXCEPTION WHILE EXPORTING NOI FREQUENCIES:"
                           : "EXCEPTION WHILE SAVING NOI FREQUENCIES:",
                       exception, false);
        return false;
    }
}

/// An empty line follows each entry: its place is that of the mediator's own text form, which these have not.
bool NOIFrequencyHandler::writeLines(const QString& path) {
    return REPORTGENERATOR::WriteAsWork(path, [&] {
        try {
            LineWriter writer(path);
            m_pMedCtrl->ForEachInWork([&](FrequencyNodeMediator& mediator) {
                writer.Append(GetString(&mediator));
                writer.Append(mediator.ToString());
            });
            writer.Commit();
            return true;
        } catch (const RGException& exception) {
            TraceLazily(TraceSource, [&] { return exception.GetErrorText(); });
            return false;
        }
    });
}

QString NOIFrequencyHandler::GetString(FrequencyNodeMediator* mediator) {
    double frequency = 0;
    double bandwidth = 0;
    QString comment;
    QString line;
    if (!mediator || !mediator->GetFrequency(frequency, 0) || !mediator->GetBandwidth(bandwidth, 0) ||
        !mediator->GetComment(comment, 0))
        return line;
    const QLatin1Char tab('\t');
    Quor::AppendFixed(line, frequency, 6);
    line += tab + Quor::OneField(comment) + tab;
    Quor::AppendFixed(line, bandwidth, 6);
    return line + tab;
}
