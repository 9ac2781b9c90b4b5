#include "workstation/preferencesdialog.h"

#include "controls/frequencystore/common/sendto.h"
#include "host/gui/guibase.h"
#include "workstation/keystable.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>

namespace {

constexpr QSize Roomy(640, 480);

QString pageTitle(Preferences::Page page) {
    switch (page) {
    case Preferences::Frequencies:
        return PreferencesDialog::tr("&Frequencies");
    case Preferences::Appearance:
        return PreferencesDialog::tr("&Appearance");
    default:
        return PreferencesDialog::tr("F&iles");
    }
}

} // namespace

PreferencesDialog::PreferencesDialog(Preferences& preferences, KeySettings& keys, QWidget* parent)
    : QDialog(parent),
      m_preferences(preferences),
      m_keys(new KeysTable(keys)),
      m_buttons(
          new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Apply | QDialogButtonBox::Cancel)) {
    setWindowTitle(tr("Preferences"));
    resize(Roomy);
    auto* layout = new QVBoxLayout(this);
    auto* tabs = new QTabWidget(this);
    for (int i = 0; i < Preferences::PageCount; ++i) {
        const auto page = static_cast<Preferences::Page>(i);
        auto* widget = new QWidget;
        auto* form = new QFormLayout(widget);
        addFields(page, *form);
        if (page == Preferences::Frequencies)
            addTolerance(*form);
        else if (page == Preferences::Files)
            addDataFolder(*form);
        tabs->addTab(widget, pageTitle(page));
    }
    tabs->addTab(m_keys, tr("&Keys"));
    layout->addWidget(tabs, 1);
    layout->addWidget(m_buttons);
    connect(m_buttons, &QDialogButtonBox::accepted, this, [this] {
        apply();
        accept();
    });
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_buttons->button(QDialogButtonBox::Apply), &QPushButton::clicked, this,
            &PreferencesDialog::apply);
    checkFolder();
}

void PreferencesDialog::addFields(Preferences::Page page, QFormLayout& form) {
    for (int i = 0; i < Preferences::Count; ++i) {
        const auto id = static_cast<Preferences::Id>(i);
        if (Preferences::PageOf(id) != page)
            continue;
        auto* box = new QComboBox;
        for (const Preferences::Choice& choice : Preferences::ChoicesOf(id))
            box->addItem(choice.label, choice.value);
        box->setCurrentIndex(box->findData(Preferences::Get(id)));
        box->setToolTip(Preferences::TipOf(id));
        m_fields[id] = box;
        form.addRow(Preferences::LabelOf(id), box);
        if (Preferences::IsForNextStart(id))
            form.addRow(QString(), new QLabel(tr("Takes effect at the next start.")));
    }
}

void PreferencesDialog::addTolerance(QFormLayout& form) {
    m_tolerance = new QDoubleSpinBox;
    m_tolerance->setObjectName(QStringLiteral("Tolerance"));
    m_tolerance->setDecimals(0);
    m_tolerance->setRange(0, SendTo::MaxTolerance);
    m_tolerance->setSuffix(QStringLiteral(" Hz"));
    m_tolerance->setValue(SendTo::Tolerance());
    m_tolerance->setToolTip(tr("What is sent is there already when an entry lies so near"));
    form.addRow(tr("&Tolerance of Send to:"), m_tolerance);
}

void PreferencesDialog::addDataFolder(QFormLayout& form) {
    auto* row = new QHBoxLayout;
    m_folder = new QLineEdit(Preferences::DataFolder());
    m_folder->setObjectName(QStringLiteral("DataFolder"));
    m_folder->setPlaceholderText(tr("the usual one"));
    m_folder->setToolTip(tr("Where the lists keep files of their own; empty for the usual folder"));
    auto* choose = new QPushButton(tr("Ch&oose..."));
    choose->setAutoDefault(false);
    row->addWidget(m_folder, 1);
    row->addWidget(choose);
    form.addRow(tr("&Data folder:"), row);
    m_folderNote = new QLabel;
    m_folderNote->setWordWrap(true);
    form.addRow(QString(), m_folderNote);
    connect(choose, &QPushButton::clicked, this, &PreferencesDialog::chooseFolder);
    connect(m_folder, &QLineEdit::textChanged, this, &PreferencesDialog::checkFolder);
}

void PreferencesDialog::chooseFolder() {
    const QString folder = QFileDialog::getExistingDirectory(this, tr("Data Folder"), QDir::currentPath(),
                                                             GuiBase::Instance().UseNativeDialogs());
    if (!folder.isEmpty())
        m_folder->setText(folder);
}

void PreferencesDialog::checkFolder() {
    const QString folder = m_folder->text();
    const bool isGood = folder.isEmpty() || (QDir::isAbsolutePath(folder) && QFileInfo(folder).isDir());
    m_folderNote->setText(
        isGood ? tr("It is %1 now. Another one takes effect at the next start; files are not moved there.")
                     .arg(QDir::toNativeSeparators(QDir::currentPath()))
               : tr("There is no such folder."));
    for (const auto button : {QDialogButtonBox::Ok, QDialogButtonBox::Apply})
        m_buttons->button(button)->setEnabled(isGood);
}

void PreferencesDialog::apply() {
    for (int i = 0; i < Preferences::Count; ++i)
        m_preferences.Set(static_cast<Preferences::Id>(i),
                          m_fields[static_cast<size_t>(i)]->currentData().toString());
    if (m_tolerance->value() != SendTo::Tolerance())
        SendTo::SetTolerance(m_tolerance->value());
    Preferences::SetDataFolder(m_folder->text());
    m_keys->Apply();
}
