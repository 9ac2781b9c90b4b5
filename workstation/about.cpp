#include "workstation/about.h"

#include <QDialogButtonBox>
#include <QFile>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <GeographicLib/Config.h>

namespace {

constexpr QSize Roomy(760, 420);
constexpr int IconSize = 64;

struct Library {
    QString name;
    QString version;
    QString use;
    QString licence; ///< SPDX expression
};

std::vector<Library> libraries() {
    return {
        {QStringLiteral("Qt Core, Gui, Widgets, Xml, Svg, Print Support"), QString::fromLatin1(qVersion()),
         AboutDialog::tr("window, drawing, printing, files"), QStringLiteral("LGPL-3.0-only")},
        {QStringLiteral("GeographicLib"), QStringLiteral(GEOGRAPHICLIB_VERSION_STRING),
         AboutDialog::tr("forms of positions"), QStringLiteral("MIT")},
#ifdef __GLIBCXX__
        {QStringLiteral("libstdc++"), QStringLiteral("GCC %1").arg(_GLIBCXX_RELEASE),
         AboutDialog::tr("C++ standard library"), QStringLiteral("GPL-3.0-or-later WITH GCC-exception-3.1")},
#endif
    };
}

QWidget* programPage() {
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    auto* icon = new QLabel;
    icon->setPixmap(QGuiApplication::windowIcon().pixmap(IconSize));
    layout->addWidget(icon, 0, Qt::AlignHCenter);
    auto* text = new QLabel(AboutDialog::tr("<h2>Frequency Store</h2><p>Version %1</p>"
                                            "<p>Lists of frequencies for radio monitoring.</p>")
                                .arg(QStringLiteral(FREQSTORE_VERSION)));
    text->setAlignment(Qt::AlignHCenter);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    layout->addWidget(text);
    layout->addStretch(1);
    return page;
}

QWidget* licencePage() {
    QFile file(QStringLiteral(":/LICENSE"));
    auto* text = new QPlainTextEdit;
    text->setObjectName(QStringLiteral("Licence"));
    text->setReadOnly(true);
    if (file.open(QIODevice::ReadOnly))
        text->setPlainText(QString::fromUtf8(file.readAll()));
    return text;
}

QWidget* librariesPage() {
    auto* table = new QTreeWidget;
    table->setObjectName(QStringLiteral("Libraries"));
    table->setRootIsDecorated(false);
    table->setHeaderLabels({AboutDialog::tr("Library"), AboutDialog::tr("Version"),
                            AboutDialog::tr("Licence"), AboutDialog::tr("For")});
    for (const Library& library : libraries()) {
        auto* row = new QTreeWidgetItem(table, {library.name, library.version, library.licence, library.use});
        for (int column = 0; column < table->columnCount(); ++column)
            row->setToolTip(column, row->text(column));
    }
    for (int column = 0; column < table->columnCount(); ++column)
        table->resizeColumnToContents(column);
    return table;
}

} // namespace

AboutDialog::AboutDialog(QWidget* parent) : QDialog(parent) {
    setWindowTitle(tr("About Frequency Store"));
    resize(Roomy);
    auto* layout = new QVBoxLayout(this);
    auto* tabs = new QTabWidget(this);
    tabs->addTab(programPage(), tr("&Program"));
    tabs->addTab(licencePage(), tr("&Licence"));
    tabs->addTab(librariesPage(), tr("Li&braries"));
    layout->addWidget(tabs, 1);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
}
