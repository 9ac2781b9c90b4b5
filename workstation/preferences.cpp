#include "workstation/preferences.h"

#include "host/base/problems.h"
#include "host/freqlist/freqstore.h"
#include "host/freqstorexml/csvoptions.h"
#include "host/gui/celldelegate.h"
#include "host/gui/guibase.h"
#include "host/gui/sortlistview.h"
#include "host/startup/cfgcenter.h"
#include "workstation/bandplan.h"
#include "workstation/frequencybar.h"
#include "workstation/language.h"
#include "workstation/mainwindow.h"

#include <QDir>
#include <QLocale>

namespace {

using Choices = std::vector<Preferences::Choice>;

const QString Yes = QStringLiteral("true");
const QString DataFolderKey = QStringLiteral("DataDirectory");
constexpr int FontSizes[] = {8, 9, 10, 11, 12, 14, 16, 18, 20, 24};

ICfg& settings() {
    return CfgCenter::GetAppCfg(ICfg::StartUp);
}

Choices units(const QString& none) {
    return {{QString(), none}, {QStringLiteral("kHz"), "kHz"}, {QStringLiteral("MHz"), "MHz"}};
}

Choices fieldUnits() {
    return units(Preferences::tr("that of the field"));
}

Choices listUnits() {
    return units(Preferences::tr("kHz, MHz from 30 MHz on"));
}

Choices no() {
    return {{QStringLiteral("false"), Preferences::tr("no")}, {Yes, Preferences::tr("yes")}};
}

Choices yes() {
    return {{Yes, Preferences::tr("yes")}, {QStringLiteral("false"), Preferences::tr("no")}};
}

Choices themes() {
    return {{QStringLiteral("desktop"), Preferences::tr("as the desktop")},
            {QStringLiteral("light"), Preferences::tr("light")},
            {QStringLiteral("dark"), Preferences::tr("dark")}};
}

Choices fontSizes() {
    Choices sizes{{QString(), Preferences::tr("as the desktop")}};
    for (const int points : FontSizes)
        sizes.push_back({QString::number(points), Preferences::tr("%1 pt").arg(points)});
    return sizes;
}

Choices languages() {
    Choices all{{QString(), Preferences::tr("as the desktop")}};
    for (const QString& code : Language::Known())
        all.push_back({code, QLocale(code).nativeLanguageName()});
    return all;
}

Choices regions() {
    Choices all;
    for (int region = 1; region <= BandPlan::RegionCount; ++region)
        all.push_back({QString::number(region), BandPlan::RegionName(region)});
    all.push_back({QStringLiteral("0"), Preferences::tr("none")});
    return all;
}

template <size_t Size>
Choices numbers(const int (&values)[Size], const QString& unit) {
    Choices all;
    for (const int value : values)
        all.push_back({QString::number(value), unit.arg(value)});
    return all;
}

Choices versionCounts() {
    Choices all = numbers({10, 5, 20, 50}, QStringLiteral("%1"));
    all.push_back({QStringLiteral("0"), Preferences::tr("none")});
    return all;
}

Choices versionSizes() {
    return numbers({1000, 100, 500, 2000, 5000}, Preferences::tr("%1 MB"));
}

Choices recoverySeconds() {
    return numbers({30, 10, 20, 45}, Preferences::tr("%1 s"));
}

struct Row {
    const char* key;
    Preferences::Page page;
    const char* label;
    const char* tip;
    Choices (*choices)();
    bool isForNextStart = false;
};

/// In the order of Preferences::Id.
constexpr Row Rows[] = {
    {"UnitHF", Preferences::Frequencies, QT_TRANSLATE_NOOP("Preferences", "Unit of bare numbers, &HF:"),
     QT_TRANSLATE_NOOP("Preferences",
                       "What a frequency counts that is typed without a unit, with an HF receiver"),
     fieldUnits},
    {"UnitVUHF", Preferences::Frequencies,
     QT_TRANSLATE_NOOP("Preferences", "Unit of bare numbers, &VHF/UHF:"),
     QT_TRANSLATE_NOOP("Preferences",
                       "What a frequency counts that is typed without a unit, with a VHF/UHF receiver"),
     fieldUnits},
    {"ListUnit", Preferences::Frequencies, QT_TRANSLATE_NOOP("Preferences", "Frequencies in &lists:"),
     QT_TRANSLATE_NOOP("Preferences", "How lists show frequencies; files and copies stay as they are"),
     listUnits},
    {"GroupThousands", Preferences::Frequencies,
     QT_TRANSLATE_NOOP("Preferences", "&Group thousands in lists:"),
     QT_TRANSLATE_NOOP("Preferences", "7 055.000 kHz instead of 7055.000 kHz"), no},
    {"Theme", Preferences::Appearance, QT_TRANSLATE_NOOP("Preferences", "&Colours:"),
     QT_TRANSLATE_NOOP("Preferences", "Light, dark, or as the desktop has them"), themes},
    {"FontSize", Preferences::Appearance, QT_TRANSLATE_NOOP("Preferences", "&Size of texts:"),
     QT_TRANSLATE_NOOP("Preferences", "How large the texts of window and lists are"), fontSizes},
    {"Language", Preferences::Appearance, QT_TRANSLATE_NOOP("Preferences", "&Language:"),
     QT_TRANSLATE_NOOP("Preferences", "The language of the window"), languages, true},
    {"BandPlanRegion", Preferences::Appearance, QT_TRANSLATE_NOOP("Preferences", "&Band plan:"),
     QT_TRANSLATE_NOOP("Preferences", "The region whose band plan the frequency bar shows"), regions},
    {"SpreadsheetSafe", Preferences::Files, QT_TRANSLATE_NOOP("Preferences", "CSV safe for &spreadsheets:"),
     QT_TRANSLATE_NOOP("Preferences", "An apostrophe before texts that a spreadsheet would run as a formula"),
     yes},
    {"Versions", Preferences::Files, QT_TRANSLATE_NOOP("Preferences", "Saved &versions of a file:"),
     QT_TRANSLATE_NOOP("Preferences", "How many contents of each list file are kept when it is saved"),
     versionCounts},
    {"VersionsSize", Preferences::Files, QT_TRANSLATE_NOOP("Preferences", "&Room for versions:"),
     QT_TRANSLATE_NOOP("Preferences", "How large the versions of all files may be together"), versionSizes},
    {"RecoverySeconds", Preferences::Files, QT_TRANSLATE_NOOP("Preferences", "Keep &unsaved work after:"),
     QT_TRANSLATE_NOOP("Preferences", "How long a change may be in no file: a crash loses no more"),
     recoverySeconds},
};
static_assert(std::size(Rows) == Preferences::Count);

double hertzOf(const QString& unit) {
    return unit.isEmpty() ? 0 : unit == QLatin1String("kHz") ? 1e3 : 1e6;
}

QString stored(Preferences::Id id) {
    return settings().GetString(QString::fromLatin1(Rows[id].key), QString());
}

bool isOneOf(const Choices& choices, const QString& value) {
    return std::any_of(choices.begin(), choices.end(),
                       [&](const Preferences::Choice& choice) { return choice.value == value; });
}

/// Tells of a value that is none.
void check(Preferences::Id id) {
    const QString value = stored(id);
    const Choices choices = Preferences::ChoicesOf(id);
    if (value.isEmpty() || isOneOf(choices, value) || id == Preferences::Language) // which tells it itself
        return;
    QStringList known;
    for (const Preferences::Choice& choice : choices) {
        if (!choice.value.isEmpty())
            known << choice.value;
    }
    Problems::Report("preferences",
                     {QDir(CfgCenter::GetDirectory()).filePath(QStringLiteral("Application.ini")), 0,
                      QStringLiteral("%1 is one of %2, not \"%3\"; the default holds")
                          .arg(QLatin1String(Rows[id].key), known.join(QStringLiteral(", ")), value)});
}

} // namespace

Preferences::Preferences(ReceiverKind kind) : m_kind(kind) {
    for (int id = 0; id < Count; ++id) {
        check(static_cast<Id>(id));
        apply(static_cast<Id>(id));
    }
}

Preferences::~Preferences() {
    GuiBase::Instance().SetBareUnit(0);
    FreqStoreXml::CsvOptions::SetSpreadsheetSafe(false);
}

void Preferences::SetWindow(MainWindow& window) {
    m_window = &window;
    styleLists();
    // When the window has the list.
    connect(&FreqStore::Instance(), &FreqStore::ListAdded, this, &Preferences::styleLists,
            Qt::QueuedConnection);
}

Preferences::Page Preferences::PageOf(Id id) {
    return Rows[id].page;
}

QString Preferences::LabelOf(Id id) {
    return tr(Rows[id].label);
}

QString Preferences::TipOf(Id id) {
    return tr(Rows[id].tip);
}

Choices Preferences::ChoicesOf(Id id) {
    return Rows[id].choices();
}

bool Preferences::IsForNextStart(Id id) {
    return Rows[id].isForNextStart;
}

QString Preferences::Get(Id id) {
    const QString value = stored(id);
    const Choices choices = ChoicesOf(id);
    return isOneOf(choices, value) ? value : choices.front().value;
}

void Preferences::Set(Id id, const QString& value) {
    if (value == Get(id))
        return;
    settings().SetString(QString::fromLatin1(Rows[id].key), value);
    apply(id);
    emit Changed();
}

QString Preferences::DataFolder() {
    return settings().GetString(DataFolderKey, QString());
}

void Preferences::SetDataFolder(const QString& folder) {
    if (folder != DataFolder())
        settings().SetString(DataFolderKey, folder);
}

void Preferences::apply(Id id) {
    const QString value = Get(id);
    switch (id) {
    case UnitHF:
    case UnitVUHF:
        return GuiBase::Instance().SetBareUnit(hertzOf(Get(m_kind == ReceiverKind::HF ? UnitHF : UnitVUHF)));
    case ListUnit:
    case GroupThousands:
        return styleLists();
    case Theme:
        return m_look.SetTheme(value == QLatin1String("dark")    ? Look::Theme::Dark
                               : value == QLatin1String("light") ? Look::Theme::Light
                                                                 : Look::Theme::Desktop);
    case FontSize:
        return m_look.SetFontSize(value.toInt());
    case BandPlanRegion:
        if (m_window) // which reads it by itself at the start
            m_window->GetBar()->SetRegion(value.toInt());
        return;
    case SpreadsheetSafe:
        return FreqStoreXml::CsvOptions::SetSpreadsheetSafe(value == Yes);
    default: // at the next start
        return;
    }
}

void Preferences::styleLists() {
    if (!m_window)
        return;
    for (SortListView* list : m_window->findChildren<SortListView*>()) {
        list->Cells().SetFrequencyStyle(Get(GroupThousands) == Yes, hertzOf(Get(ListUnit)));
        list->viewport()->update();
    }
}
