#include "workstation/welcome.h"

#include "host/startup/cfgcenter.h"
#include "workstation/icons.h"

#include <QCheckBox>
#include <QEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

namespace {

const QString SettingKey = QStringLiteral("Welcome");
constexpr int TextWidth = 460;

struct Way {
    const char* icon;
    const char* text;
    const char* tip;
    void (WelcomePage::*wanted)();
};
constexpr Way Ways[] = {
    {"open", QT_TRANSLATE_NOOP("WelcomePage", "Open the &samples"),
     QT_TRANSLATE_NOOP("WelcomePage", "Public frequencies in every list, and a search that finds signals"),
     &WelcomePage::SamplesWanted},
    {"receiver", QT_TRANSLATE_NOOP("WelcomePage", "Try the simulated &receiver"),
     QT_TRANSLATE_NOOP("WelcomePage", "Type a frequency to tune to, and see signals come and go"),
     &WelcomePage::ReceiverWanted},
    {"import", QT_TRANSLATE_NOOP("WelcomePage", "Open a &file..."),
     QT_TRANSLATE_NOOP("WelcomePage",
                       "A list, a job or power sweeps; files can be dropped on the window, too"),
     &WelcomePage::FileWanted},
    {"help", QT_TRANSLATE_NOOP("WelcomePage", "Read the &guide"),
     QT_TRANSLATE_NOOP("WelcomePage", "How to do what, with pictures"), &WelcomePage::GuideWanted},
};

} // namespace

bool WelcomePage::IsWanted() {
    return CfgCenter::GetAppCfg(ICfg::StartUp).GetBool(SettingKey, true);
}

WelcomePage::WelcomePage(QWidget& place)
    : QFrame(&place), m_again(new QCheckBox(tr("&Do not show this again"))) {
    setAutoFillBackground(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_DeleteOnClose);
    auto* area = new QScrollArea; // the lists may have little room
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus);
    auto* page = new QVBoxLayout(this);
    page->setContentsMargins(0, 0, 0, 0);
    page->addWidget(area);
    auto* content = new QWidget;
    auto* centred = new QHBoxLayout(content);
    auto* column = new QWidget;
    column->setMaximumWidth(TextWidth);
    centred->addStretch(1);
    centred->addWidget(column, TextWidth);
    centred->addStretch(1);
    auto* layout = new QVBoxLayout(column);
    layout->addStretch(1);
    auto* title = new QLabel(tr("<h2>Lists of frequencies for radio monitoring</h2>"));
    title->setWordWrap(true);
    layout->addWidget(title);
    for (const Way& way : Ways) {
        auto* button = new QPushButton(Icons::Get(QLatin1String(way.icon)), tr(way.text));
        button->setObjectName(QLatin1String(way.icon));
        auto* tip = new QLabel(tr(way.tip));
        tip->setWordWrap(true);
        tip->setIndent(button->iconSize().width());
        button->setAccessibleDescription(tip->text());
        layout->addWidget(button);
        layout->addWidget(tip);
        connect(button, &QPushButton::clicked, this, [this, wanted = way.wanted] {
            End();
            emit(this->*wanted)();
        });
    }
    layout->addSpacing(fontMetrics().height());
    m_again->setChecked(true);
    layout->addWidget(m_again);
    auto* close = new QPushButton(tr("&Close"));
    close->setObjectName(QStringLiteral("close"));
    layout->addWidget(close, 0, Qt::AlignRight);
    layout->addStretch(2);
    connect(close, &QPushButton::clicked, this, &WelcomePage::End);
    area->setWidget(content);
    place.installEventFilter(this);
    setGeometry(place.rect());
    show();
    raise();
    setFocus();
}

void WelcomePage::End() {
    if (m_again->isChecked() == IsWanted())
        CfgCenter::GetAppCfg(ICfg::StartUp).SetBool(SettingKey, !m_again->isChecked());
    close();
}

bool WelcomePage::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize)
        setGeometry(parentWidget()->rect());
    return QFrame::eventFilter(watched, event);
}

void WelcomePage::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        End();
    else
        QFrame::keyPressEvent(event);
}
