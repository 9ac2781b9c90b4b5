#include "workstation/noikeeper.h"

#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/files/filelook.h"
#include "controls/frequencystore/noi/noifrequencyhandler.h"
#include "host/base/problems.h"
#include "host/startup/cfgcenter.h"
#include "workstation/freename.h"

#include <QDir>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>
#include <QScopeGuard>

namespace {

NOIFrequencyHandler& list() {
    return *NOIFrequencyHandler::Instance();
}

/// Where the list goes that has no file any more.
QString nameOfNewFile() {
    return FreeName(QDir::current().filePath(QStringLiteral("NoiFrequencies.xml")));
}

struct Choice {
    QMessageBox::StandardButton button;
    const char* text;
};

} // namespace

NoiKeeper::NoiKeeper(QWidget* window, const NoiBands& bands)
    : m_window(window), m_hadEntries(bands.GetCount() > 0) {
    connect(&bands, &NoiBands::Changed, this,
            [this, &bands] { m_hadEntries = m_hadEntries || bands.GetCount() > 0; });
}

QString NoiKeeper::SettingName() {
    return QStringLiteral("NOIFrequencies");
}

/// Saves the list, and keeps the reason when that is told to fail.
QString NoiKeeper::saveAndListen() {
    Problems::Sink tell;
    const auto giveBack = qScopeGuard([&tell] { Problems::SetSink(tell); });
    tell = Problems::SetSink([&](const Problem& problem) {
        m_reason = problem.ToString();
        if (tell)
            tell(problem);
    });
    m_reason.clear();
    return list().FileSave(true);
}

NoiKeeper::State NoiKeeper::save() {
    // A list that waits for a file has nothing of its own, and keeps its file.
    if (!list().GetMediatorCtrl() || list().IsWaitingForFile() || (m_isNeeded && !m_isNeeded()))
        return State::Kept;
    const bool saved = !saveAndListen().isEmpty();
    if (saved)
        return State::Kept;
    const QString& file = list().GetCurrentFileName();
    if (list().GetMediatorCtrl()->size() > 0)
        return file.isEmpty() ? State::NoFile : State::Failed;
    if (file.contains(QLatin1String(".noi")))
        return State::Failed;
    m_entriesInFile = m_hadEntries && QFileInfo::exists(file) ? LookAtFile(file).rows : 0;
    return m_entriesInFile > 0 ? State::Emptied : State::Kept;
}

QString NoiKeeper::whatIsWrong(State state) const {
    const QString file = QFileInfo(list().GetCurrentFileName()).fileName();
    switch (state) {
    case State::Failed:
        return tr("The frequencies of interest could not be saved in %1.").arg(file);
    case State::NoFile:
        return tr("The frequencies of interest have no file since a file dialog was cancelled.");
    case State::Emptied:
        return tr("The list of frequencies of interest is empty; its file %1 still holds %n entries.",
                  nullptr, static_cast<int>(m_entriesInFile))
            .arg(file);
    case State::Kept:
        break;
    }
    return QString();
}

QString NoiKeeper::WhatIsKept() const {
    const HalvoNodeMediatorCtrl* entries = list().GetMediatorCtrl();
    if (!entries || entries->size() == 0)
        return QString();
    const QString count = tr("%Ln entries", nullptr, static_cast<int>(entries->size()));
    const QString file = QFileInfo(list().GetCurrentFileName()).fileName();
    return file.isEmpty()
               ? tr("Frequencies of interest are kept without a question: %1.").arg(count)
               : tr("Frequencies of interest are kept without a question: %1 in %2.").arg(count, file);
}

bool NoiKeeper::MayLeave() {
    using Box = QMessageBox;
    static const std::map<State, std::vector<Choice>> choices = {
        {State::Failed,
         {{Box::Retry, QT_TR_NOOP("Try Again")},
          {Box::Save, QT_TR_NOOP("Save Elsewhere...")},
          {Box::Discard, QT_TR_NOOP("Leave Without Saving")},
          {Box::Cancel, QT_TR_NOOP("Stay")}}},
        {State::NoFile,
         {{Box::Save, QT_TR_NOOP("Save As...")},
          {Box::Discard, QT_TR_NOOP("Leave Without Saving")},
          {Box::Cancel, QT_TR_NOOP("Stay")}}},
        {State::Emptied,
         {{Box::Yes, QT_TR_NOOP("Empty the File")},
          {Box::No, QT_TR_NOOP("Keep the File")},
          {Box::Cancel, QT_TR_NOOP("Stay")}}},
    };
    m_fileToRemember.clear();
    for (State state = save(); state != State::Kept; state = save()) {
        Box box(Box::Warning, tr("Frequencies of Interest"), whatIsWrong(state), Box::NoButton, m_window);
        box.setInformativeText(
            state == State::Emptied ? tr("A file that is kept is read again at the next start.") : m_reason);
        for (const auto& [button, text] : choices.at(state))
            box.addButton(button)->setText(tr(text));
        box.setDefaultButton(choices.at(state).front().button);
        switch (box.exec()) {
        case Box::Retry:
            break;
        case Box::Save:
            list().FileSave(false); // asks for the name
            break;
        case Box::Yes:
            list().SaveFile(list().GetCurrentFileName());
            m_fileToRemember = list().GetCurrentFileName();
            break;
        case Box::No:
            m_fileToRemember = list().GetCurrentFileName();
            return true;
        case Box::Discard:
            return true;
        default: // also when the program is ended while the box is open
            return false;
        }
    }
    return true;
}

bool NoiKeeper::Keep() {
    const State state = save();
    const QString& present = list().GetCurrentFileName();
    // A list that never had an entry has no file either, and the next start would miss one.
    m_fileToRemember = state != State::Emptied && QFileInfo::exists(present) ? present : QString();
    if (state == State::NoFile) {
        const QString file = nameOfNewFile();
        if (list().SaveFile(file))
            Problems::Report("noikeeper",
                             {file, 0, tr("keeps the frequencies of interest, which had no file any more")});
    } else if (state == State::Emptied) {
        Problems::Report("noikeeper", Problem::FromText(whatIsWrong(state)));
    }
    return state == State::Kept;
}

void NoiKeeper::RememberFile() const {
    ICfg& settings = CfgCenter::GetAppCfg(ICfg::Shutdown);
    if (!m_fileToRemember.isEmpty() && settings.GetString(SettingName(), QString()) != m_fileToRemember)
        settings.SetString(SettingName(), m_fileToRemember);
}
