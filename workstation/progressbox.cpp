#include "workstation/progressbox.h"

#include <QApplication>
#include <QBackingStore>
#include <QEventLoop>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <QWindow>

namespace {

constexpr int CardWidth = 380;
constexpr int CardMargin = 16;
constexpr int Corner = 6;

/// "about 12 s left"; empty while nobody can say.
QString timeLeft(const LongWork::Progress& progress) {
    constexpr qint64 LeastMilliseconds = 1000;
    constexpr qint64 Minute = 60;
    if (progress.done <= 0 || progress.total <= progress.done || progress.inPart < LeastMilliseconds)
        return QString();
    const double share = double(progress.done) / double(progress.total);
    const auto seconds = static_cast<qint64>(double(progress.inPart) / 1000 * (1 - share) / share) + 1;
    return seconds < 2 * Minute ? ProgressCard::tr("about %1 s left").arg(seconds)
                                : ProgressCard::tr("about %1 min left").arg(seconds / Minute);
}

/// What the operator sees of a window, as it was painted last; null when that cannot be known.
QPixmap lastPictureOf(const QWidget& window) {
    QBackingStore* const store = window.backingStore();
    const QPaintDevice* const device = store && !store->size().isEmpty() ? store->paintDevice() : nullptr;
    if (!device || device->devType() != QInternal::Image)
        return QPixmap();
    return QPixmap::fromImage(static_cast<const QImage*>(device)->copy());
}

} // namespace

ProgressCard::ProgressCard(QWidget* parent)
    : QWidget(parent),
      m_title(new QLabel),
      m_bar(new QProgressBar),
      m_details(new QLabel),
      m_cancel(new QPushButton(tr("Cancel"))) {
    QFont bold = m_title->font();
    bold.setBold(true);
    m_title->setFont(bold);
    m_bar->setAccessibleName(tr("Progress"));
    m_cancel->setToolTip(tr("Leave the lists as they were (Esc)"));
    m_cancel->setFocusPolicy(Qt::NoFocus); // the focus stays where it was
    auto* row = new QHBoxLayout;
    row->addWidget(m_details, 1);
    row->addWidget(m_cancel);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(CardMargin, CardMargin, CardMargin, CardMargin);
    column->addWidget(m_title);
    column->addWidget(m_bar);
    column->addLayout(row);
    setFixedWidth(CardWidth);
    connect(m_cancel, &QPushButton::clicked, this, [] { LongWork::Cancel(); });
}

void ProgressCard::Show(const LongWork::Progress& progress) {
    constexpr int Percents = 100;
    const int room = CardWidth - 2 * CardMargin;
    m_title->setText(m_title->fontMetrics().elidedText(progress.title, Qt::ElideMiddle, room));
    m_bar->setRange(0, progress.total > 0 ? Percents : 0);
    if (progress.total > 0)
        m_bar->setValue(static_cast<int>(double(progress.done) / double(progress.total) * Percents));
    QStringList details;
    if (progress.part != progress.title)
        details << progress.part;
    if (const QString left = timeLeft(progress); !left.isEmpty())
        details << left;
    m_details->setText(progress.isCancelled ? tr("Everything is put back as it was...")
                                            : details.join(QStringLiteral(" - ")));
    m_cancel->setEnabled(!progress.isCancelled);
}

void ProgressCard::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(palette().window());
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), Corner, Corner);
}

/// Lies over a whole window and shows what that showed last. While it is there the window's own layout does
/// nothing.
class ProgressBox::Cover final : public QWidget {
public:
    explicit Cover(QWidget& window) : QWidget(&window), m_picture(lastPictureOf(window)) {
        setAttribute(Qt::WA_OpaquePaintEvent);
        setGeometry(window.rect());
        if (QLayout* layout = window.layout())
            layout->setEnabled(false);
        window.installEventFilter(this);
        show();
        raise();
    }
    ~Cover() override {
        QLayout* const layout = parentWidget()->layout();
        if (!layout)
            return;
        layout->setEnabled(true);
        layout->invalidate();
        layout->activate();
    }

    ProgressCard* AddCard() {
        auto* card = new ProgressCard(this);
        m_card = card;
        return card;
    }
    void Place() {
        m_card->adjustSize();
        m_card->move((width() - m_card->width()) / 2, (height() - m_card->height()) / 3);
        m_card->show();
        update();
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Resize) {
            setGeometry(parentWidget()->rect());
            if (m_card)
                Place();
        }
        return false;
    }
    void paintEvent(QPaintEvent*) override {
        constexpr int Veil = 90; // of 255
        QPainter painter(this);
        QColor ground = palette().color(QPalette::Window);
        painter.fillRect(rect(), ground);
        painter.drawPixmap(0, 0, m_picture);
        if (!m_card)
            return;
        ground.setAlpha(Veil);
        painter.fillRect(rect(), ground);
    }

private:
    QPixmap m_picture;
    QPointer<ProgressCard> m_card;
};

ProgressBox::ProgressBox(QWidget& window) : m_window(window), m_before(LongWork::SetDisplay(this)) {}

ProgressBox::~ProgressBox() {
    Hide();
    LongWork::SetDisplay(m_before);
}

void ProgressBox::coverWindows() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && !window->isMinimized() && window->windowType() != Qt::ToolTip)
            m_covers.emplace_back(new Cover(*window)); // the window's
    }
}

/// In the window that the operator works with, if it has room.
void ProgressBox::showCard(const LongWork::Progress& progress) {
    const auto coverOf = [this](const QWidget* window) -> Cover* {
        const auto found = std::find_if(m_covers.begin(), m_covers.end(), [window](const auto& cover) {
            return cover && window && cover->parentWidget() == window;
        });
        return found == m_covers.end() || (*found)->width() < CardWidth ? nullptr : found->data();
    };
    Cover* cover = coverOf(QApplication::activeModalWidget());
    cover = cover ? cover : coverOf(QApplication::activeWindow());
    cover = cover ? cover : coverOf(&m_window);
    if (!cover)
        return;
    m_card = cover->AddCard();
    m_card->Show(progress);
    cover->Place();
}

void ProgressBox::Turn(const LongWork::Progress& progress) {
    if (m_covers.empty())
        coverWindows();
    if (m_card)
        m_card->Show(progress);
    else if (progress.milliseconds >= Patience)
        showCard(progress);
    qApp->installEventFilter(this);
    // The name is that of the platform for which it was made; all event loops of Unix heed it.
    QEventLoop::ProcessEventsFlags events = QEventLoop::X11ExcludeTimers;
    if (!m_card) // who types on in short work is heard after it
        events |= QEventLoop::ExcludeUserInputEvents;
    QCoreApplication::processEvents(events);
    qApp->removeEventFilter(this);
}

void ProgressBox::Hide() {
    for (const QPointer<Cover>& cover : std::exchange(m_covers, {}))
        delete cover;
    for (Held& held : std::exchange(m_held, {})) {
        if (held.receiver)
            QCoreApplication::postEvent(held.receiver, held.event.release());
    }
}

bool ProgressBox::isOurs(const QObject* object) const {
    const auto* const widget = qobject_cast<const QWidget*>(object);
    return std::any_of(m_covers.begin(), m_covers.end(), [&](const QPointer<Cover>& cover) {
        return cover && widget && (widget == cover || cover->isAncestorOf(widget));
    });
}

bool ProgressBox::takeKey(QEvent& event) {
    if (event.type() == QEvent::KeyPress && static_cast<QKeyEvent&>(event).key() == Qt::Key_Escape && m_card)
        LongWork::Cancel();
    event.accept();
    return true;
}

void ProgressBox::closeLater(QObject& window) {
    LongWork::Cancel();
    LongWork::WhenDone([wanted = QPointer<QObject>(&window)] {
        if (auto* const native = qobject_cast<QWindow*>(wanted.data()))
            native->close();
    });
}

/// While a turn lasts. The windows get what they need to show themselves; what else is to happen waits or is
/// dropped.
bool ProgressBox::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
        return takeKey(*event);
    case QEvent::Close:
        event->ignore();
        closeLater(*watched);
        return true;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
        return watched->isWidgetType() && !isOurs(watched);
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
    case QEvent::FocusIn:
    case QEvent::FocusOut:
    case QEvent::InputMethod:
    case QEvent::Timer:
        return !isOurs(watched);
    default:
        break;
    }
    if (event->type() < QEvent::User)
        return false;
    m_held.push_back({watched, std::unique_ptr<QEvent>(event->clone())});
    return true;
}
