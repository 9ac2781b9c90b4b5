#pragma once

#include <QLabel>
#include <QPainter>
#include <QStyle>

/// A label of one line that shows dots for what its width does not hold, instead of a text cut through a
/// letter, and makes no window wider. Its `text()` stays whole, for a tip and for assistive tools.
class ElidedLabel : public QLabel {
public:
    explicit ElidedLabel(QWidget* parent = nullptr, Qt::TextElideMode mode = Qt::ElideRight)
        : QLabel(parent), m_mode(mode) {
        setMinimumWidth(1);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        const QRect room = contentsRect();
        style()->drawItemText(&painter, room, static_cast<int>(alignment()), palette(), isEnabled(),
                              fontMetrics().elidedText(text(), m_mode, room.width()), foregroundRole());
    }

private:
    Qt::TextElideMode m_mode;
};
