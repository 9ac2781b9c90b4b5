#include "controls/frequencystore/results/searchmcdatahandler.h"

#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/common/keys.h"
#include "controls/frequencystore/files/filegate.h"
#include "controls/frequencystore/results/resultdialogs.h"
#include "controls/frequencystore/results/resultlistviewfactory.h"
#include "controls/frequencystore/results/searchmcdatareader.h"
#include "host/base/datetime.h"
#include "host/base/fixedplace.h"
#include "host/base/quoros.h"
#include "host/base/trace.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/listsaving.h"
#include "host/freqlist/pixstatevector.h"
#include "host/report/filework.h"
#include "host/startup/cfgcenter.h"

namespace {

constexpr int StoreType = 4;
constexpr int BarSymbol = 4;

/// A sheet of results with a yellow mark.
constexpr const char* IconXpm[] = {
    "16 16 7 1",        "# c #000000",      "c c #000400",      "d c #008200",      "e c #088608",
    "b c #ffffff",      "a c #ffff00",      ". c none",         ".......####.....", "..######aa###...",
    ".#bbbbbcaa#bb#..", ".#bddddcaa#db#..", ".#bbbbbcaa#bb#..", ".#bbb###aa####..", ".#bdd#aaaaaa##..",
    ".#bbbb#aaaacb#..", ".#bbbbbcaacbb#..", ".#bddddd##bbb#..", ".#bbbbbbbbbbb#..", ".#bbbbbbbbbbb#..",
    ".#beddeddedeb#..", ".#bbbbbbbbbbb#..", ".#bbbbbbbbbbb#..", "..###########..."};

PixStateVector* createPixStateVector() {
    auto* line = new PixStateVectorOnNode;
    if (const Node* root = SearchMCDataHandler::Instance()->GetItemsRoot()) {
        line->Init(root->GetPathName());
        line->SetKeyWords(Keys::KeyFrequency.Text(), Keys::BandwidthSel.Text(), Keys::KeyType.Text(),
                          Keys::Locked.Text());
        line->SetSymbol(BarSymbol);
    }
    return line;
}

/// A file of the data directory whose name carries the present time.
QString nameWithTime(const char* extension) {
    const QString directory = CfgCenter::GetAdminCfg(ICfg::Administration)
                                  .GetString(QStringLiteral("VeltaDataDir"), QStringLiteral("D:\\VeltaData"));
    const auto now = static_cast<quint64>(QuorOS::Create().CurrentTime());
    const QString time =
        Quor::DateTime(now).toString(QStringLiteral("yyyy_MM_dd__hh_mm_ss"), Quor::DateTime::Local_TimeZone);
    const QLatin1Char separator(directory.startsWith(QLatin1Char('/')) ? '/' : '\\');
    return directory + separator + QStringLiteral("SearchMCDATA_") + time + QLatin1String(extension);
}

} // namespace

SearchMCDataHandler* SearchMCDataHandler::m_pInstance = nullptr;

SearchMCDataHandler* SearchMCDataHandler::Instance() {
    if (!m_pInstance)
        m_pInstance = new SearchMCDataHandler;
    return m_pInstance;
}

void SearchMCDataHandler::DeleteInstance() {
    delete std::exchange(m_pInstance, nullptr);
}

SearchMCDataHandler::~SearchMCDataHandler() = default;

void SearchMCDataHandler::Init(Node* root) {
    m_pNode = root;
    m_pMedCtrl = std::make_unique<HalvoNodeMediatorCtrl>(MediatorType::SearchMCData, StoreType);
    m_pMedCtrl->SetEntryMaker([this](const FreqStoreXml::FrequencyStoreEntry& entry) {
        if (m_pNode)
            SearchMCDataReader::AddEntry(*m_pNode.get(), entry);
    });
    m_pMedCtrl->IncrementVisibleCnt(nullptr);
    if (root)
        m_pMedCtrl->Init(root->GetPathName());
}

int SearchMCDataHandler::AddToFreqStore() {
    AssertHolds(FixedPlace::ResultsWithoutController, m_pMedCtrl != nullptr, "m_pMedCtrl");
    return FreqStore::Instance().RegisterList({.name = tr("Data Results"),
                                               .icon = QPixmap(IconXpm),
                                               .pixStateFactory = createPixStateVector,
                                               .controller = m_pMedCtrl.get(),
                                               .viewFactory = CreateSearchMCDataListView});
}

QString SearchMCDataHandler::GetSaveFileName(QString name, bool silent) {
    if (name.isEmpty())
        name = nameWithTime(".xml");
    return silent ? name : ResultDialogs::FileToSave(name);
}

QString SearchMCDataHandler::GetExportFileName(QString name, bool silent) {
    if (name.isEmpty())
        name = nameWithTime(".csv");
    return silent ? name : ResultDialogs::FileToExport(name);
}

/// A name of no file, as a cancelled dialog gives it, goes to the write and fails there, too. While a dialog
/// is open the handler may end.
QString SearchMCDataHandler::writeFile(QString (SearchMCDataHandler::*nameOf)(QString, bool),
                                       bool (*write)(HalvoNodeMediatorCtrl&, const QString&), bool silent) {
    for (;;) {
        const QString name = (this->*nameOf)(QString(), silent);
        if (m_pInstance != this)
            return QString();
        if (!m_pMedCtrl)
            return name;
        m_pMedCtrl->ForceUpdateNow();
        bool isCancelled = true;
        const auto writeIt = [&] {
            const bool isWritten = write(*m_pMedCtrl, name);
            isCancelled = false;
            return isWritten;
        };
        if (REPORTGENERATOR::WriteAsWork(name, writeIt))
            return name;
        if (isCancelled || !ResultDialogs::IsToTryAnotherFile(name) || m_pInstance != this)
            return QString();
    }
}

QString SearchMCDataHandler::SaveToFile(bool silent) {
    const QString name = writeFile(
        &SearchMCDataHandler::GetSaveFileName,
        [](HalvoNodeMediatorCtrl& list, const QString& file) {
            return ListSaving::Do(&list, [&] { return list.SaveFrequencies(file); });
        },
        silent);
    if (!name.isEmpty())
        FileGate::WasWritten(FileGate::List::Results, name);
    return name;
}

QString SearchMCDataHandler::ExportToFile(bool silent) {
    return writeFile(
        &SearchMCDataHandler::GetExportFileName,
        [](HalvoNodeMediatorCtrl& list, const QString& name) {
            return list.ExportFrequencies(name, FreqStoreXml::FrequencyStoreListHelper::SearchResults);
        },
        silent);
}
