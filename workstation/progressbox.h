#pragma once

#include "host/base/longwork.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <memory>
#include <vector>

class QLabel;
class QProgressBar;
class QPushButton;

/// The card that shows long work to the operator, with the button that cancels it.
class ProgressCard : public QWidget {
    Q_OBJECT

public:
    explicit ProgressCard(QWidget* parent);

    void Show(const LongWork::Progress& progress);
    QPushButton* GetCancelButton() const { return m_cancel; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QLabel* m_title;
    QProgressBar* m_bar;
    QLabel* m_details;
    QPushButton* m_cancel;
};

/// Shows long work in the windows of the program. Soon after it begins every window shows its last picture,
/// since its lists may be half-filled; after half a second there is a card with title, percentage, time left
/// and Cancel (or Esc). Windows can be moved, resized and uncovered; a window that is to be closed cancels
/// the work and closes when that has ended. No timer runs. Input of before the card waits for the end of the
/// work, other input is dropped.
class ProgressBox : public QObject, private LongWork::Display {
    Q_OBJECT

public:
    /// Milliseconds before the card shows.
    static constexpr qint64 Patience = 500;

    /// `window`, which outlives this, has the card when no window is active.
    explicit ProgressBox(QWidget& window);
    ~ProgressBox() override;

    /// Null while there is none.
    ProgressCard* GetCard() const { return m_card; }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    class Cover;
    /// An event that waits for the end of the work.
    struct Held {
        QPointer<QObject> receiver;
        std::unique_ptr<QEvent> event;
    };

    void Turn(const LongWork::Progress& progress) override;
    void Hide() override;
    void coverWindows();
    void showCard(const LongWork::Progress& progress);
    bool isOurs(const QObject* object) const;
    bool takeKey(QEvent& event);
    void closeLater(QObject& window);

    QWidget& m_window;
    LongWork::Display* m_before;
    std::vector<QPointer<Cover>> m_covers;
    QPointer<ProgressCard> m_card;
    std::vector<Held> m_held;
};
