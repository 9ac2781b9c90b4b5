#include "workstation/helpwindow.h"

#include <QCoreApplication>
#include <QDir>
#include <QHBoxLayout>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QLocale>
#include <QRegularExpression>
#include <QScrollBar>
#include <QShortcut>
#include <QSplitter>
#include <QTextBrowser>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

constexpr QSize Roomy(980, 620);
constexpr int ContentsWidth = 230;
constexpr int Margins = 32; ///< of the text, beside a picture
constexpr char English[] = "en";
constexpr char FirstTopic[] = "start";

constexpr const char* TopicNames[] = {FirstTopic,     "find",   "channels", "edit",        "search", "bar",
                                      "time-picture", "export", "sharing",  "preferences", "keys",   "files"};

/// What the guide says of a widget, by its class.
struct TopicRow {
    const char* className;
    const char* topic;
};
constexpr TopicRow TopicRows[] = {
    {"FilterField", "find"},
    {"FrequencyBar", "bar"},
    {"TimePicture", "time-picture"},
    {"DetailsPanel", "edit"},
    {"TuningStrip", "find"},
    {"ReceiverPanel", "find"},
    {"MemorySystemListView", "channels"},
    {"JobPanel", "channels"},
    {"ScanPanel", "channels"},
    {"WkfListView", "edit"},
    {"SearchMCNOIListView", "search"},
    {"BandsPanel", "search"},
    {"SearchMCDataListView", "search"},
    {"SearchMCVectorListView", "search"},
    {"SearchMCExtendedVectorListView", "search"},
    {"ShareSiteView", "sharing"},
    {"ShareSeatsPanel", "sharing"},
    {"ShareDialog", "sharing"},
    {"ShareRefusal", "sharing"},
    {"PreferencesDialog", "preferences"},
    {"MessagesPanel", "files"},
};

QString pathOf(const QString& topic, const QString& language) {
    return QStringLiteral(":/guide/%1/%2.md").arg(language, topic);
}

/// The first heading.
QString titleOf(const QString& markdown) {
    return markdown.section(QLatin1Char('\n'), 0, 0).mid(2);
}

/// Shows pictures no wider than itself.
class GuideText : public QTextBrowser {
public:
    using QTextBrowser::QTextBrowser;

    QVariant loadResource(int type, const QUrl& name) override {
        if (type != QTextDocument::ImageResource)
            return QTextBrowser::loadResource(type, name);
        const QStringList folders = searchPaths();
        QImage picture(QDir(folders.value(0)).filePath(name.fileName()));
        const int room = viewport()->width() - Margins;
        return picture.width() > room ? picture.scaledToWidth(room, Qt::SmoothTransformation) : picture;
    }
};

} // namespace

HelpWindow* HelpWindow::ShowFor(QWidget& window, const QWidget* focus) {
    auto* help = window.findChild<HelpWindow*>(QString(), Qt::FindDirectChildrenOnly);
    if (!help)
        help = new HelpWindow(&window);
    help->show();
    help->raise();
    help->activateWindow();
    help->ShowTopic(TopicOf(focus));
    return help;
}

QStringList HelpWindow::Topics() {
    return {std::begin(TopicNames), std::end(TopicNames)};
}

QString HelpWindow::TopicOf(const QWidget* widget) {
    for (; widget; widget = widget->parentWidget()) {
        const auto* row =
            std::find_if(std::begin(TopicRows), std::end(TopicRows),
                         [&](const TopicRow& known) { return widget->inherits(known.className); });
        if (row != std::end(TopicRows))
            return QString::fromLatin1(row->topic);
    }
    return QString::fromLatin1(FirstTopic);
}

QString HelpWindow::TextOf(const QString& topic, const QString& language) {
    QFile file(pathOf(topic, language));
    if (!file.exists())
        file.setFileName(pathOf(topic, QLatin1String(English)));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString HelpWindow::FindPictures(const QString& programDirectory, const QString& language) {
    for (const char* candidate : {"../share/doc/freqstore/guide", "guide"}) {
        for (const QString& code : {language, QString::fromLatin1(English)}) {
            const QString folder =
                QStringLiteral("%1/%2/%3").arg(programDirectory, QLatin1String(candidate), code);
            if (QDir(folder).exists())
                return QDir::cleanPath(folder);
        }
    }
    return QString();
}

HelpWindow::HelpWindow(QWidget* parent)
    : QDialog(parent),
      m_language(QLocale().name().section(QLatin1Char('_'), 0, 0)),
      m_contents(new QListWidget),
      m_text(new GuideText),
      m_find(new QLineEdit),
      m_found(new QLabel) {
    setWindowTitle(tr("Guide"));
    setWindowFlag(Qt::WindowMinMaxButtonsHint);
    resize(Roomy);
    auto* layout = new QVBoxLayout(this);
    auto* row = new QHBoxLayout;
    m_find->setPlaceholderText(tr("Find in this topic"));
    m_find->setClearButtonEnabled(true);
    row->addWidget(m_find, 1);
    for (const bool backward : {true, false}) {
        auto* button = new QToolButton;
        button->setArrowType(backward ? Qt::UpArrow : Qt::DownArrow);
        button->setToolTip(backward ? tr("Find the one before") : tr("Find the next one"));
        connect(button, &QToolButton::clicked, this, [this, backward] { FindNext(backward); });
        row->addWidget(button);
    }
    row->addWidget(m_found);
    layout->addLayout(row);
    auto* parts = new QSplitter;
    parts->addWidget(m_contents);
    parts->addWidget(m_text);
    parts->setStretchFactor(1, 1);
    parts->setSizes({ContentsWidth, Roomy.width() - ContentsWidth});
    layout->addWidget(parts, 1);
    m_contents->setAccessibleName(tr("Contents"));
    m_text->setAccessibleName(tr("Text"));
    m_text->setOpenLinks(false);
    m_text->setSearchPaths({FindPictures(QCoreApplication::applicationDirPath(), m_language)});
    for (const QString& topic : Topics()) {
        auto* item = new QListWidgetItem(titleOf(TextOf(topic, m_language)), m_contents);
        item->setData(Qt::UserRole, topic);
    }
    connect(m_contents, &QListWidget::currentRowChanged, this, &HelpWindow::showCurrent);
    connect(m_text, &QTextBrowser::anchorClicked, this,
            [this](const QUrl& link) { ShowTopic(link.path().section(QLatin1Char('.'), 0, 0)); });
    connect(m_find, &QLineEdit::returnPressed, this, [this] { FindNext(); });
    connect(m_find, &QLineEdit::textChanged, m_found, &QLabel::clear);
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, m_find, [this] {
        m_find->setFocus(Qt::ShortcutFocusReason);
        m_find->selectAll();
    });
}

void HelpWindow::ShowTopic(const QString& topic) {
    const qsizetype row = Topics().indexOf(topic);
    if (row >= 0)
        m_contents->setCurrentRow(static_cast<int>(row));
}

QString HelpWindow::GetTopic() const {
    return m_contents->currentItem() ? m_contents->currentItem()->data(Qt::UserRole).toString() : QString();
}

void HelpWindow::showCurrent() {
    QString text = TextOf(GetTopic(), m_language);
    if (m_text->searchPaths().value(0).isEmpty()) // no gaps for pictures that are not there
        text.remove(QRegularExpression(QStringLiteral("!\\[[^]]*\\]\\([^)]*\\)\n")));
    m_text->setMarkdown(text);
    m_text->verticalScrollBar()->setValue(0);
    m_found->clear();
}

bool HelpWindow::FindNext(bool backward) {
    const auto flags = backward ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    if (m_text->find(m_find->text(), flags))
        return true;
    m_text->moveCursor(backward ? QTextCursor::End : QTextCursor::Start);
    const bool found = m_text->find(m_find->text(), flags);
    m_found->setText(found ? tr("from the top again") : tr("not in this topic"));
    return found;
}
