#include "workstation/icons.h"

#include "host/gui/colorset.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QSvgRenderer>

namespace {

QColor TextColor(QIcon::Mode mode) {
    const QPalette palette = QGuiApplication::palette();
    switch (mode) {
    case QIcon::Disabled:
        return palette.color(QPalette::Disabled, QPalette::WindowText);
    case QIcon::Selected:
        return palette.color(QPalette::Active, QPalette::HighlightedText);
    default: // "active" is what the pointer is over, on the same ground as all others
        return palette.color(QPalette::Active, QPalette::WindowText);
    }
}

/// An engine whose pixmaps are what it paints, on nothing.
class PaintedEngine : public QIconEngine {
public:
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap result(size);
        result.fill(Qt::transparent);
        QPainter painter(&result);
        paint(&painter, result.rect(), mode, state);
        return result;
    }
};

/// Draws a drawing anew each time, with the text colour in the place of "currentColor".
class LineArtEngine : public PaintedEngine {
public:
    explicit LineArtEngine(QByteArray drawing) : m_drawing(std::move(drawing)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        QByteArray drawing = m_drawing;
        const QColor color = TextColor(mode);
        QSvgRenderer renderer(drawing.replace("currentColor", color.name(QColor::HexRgb).toLatin1()));
        renderer.setAspectRatioMode(Qt::KeepAspectRatio);
        painter->save();
        painter->setOpacity(painter->opacity() * color.alphaF());
        renderer.render(painter, rect);
        painter->restore();
    }

    QIconEngine* clone() const override { return new LineArtEngine(*this); }

private:
    QByteArray m_drawing; ///< SVG text
};

/// Paints a picture, on a light ground where the palette is dark.
class GroundedEngine : public PaintedEngine {
public:
    explicit GroundedEngine(QPixmap picture) : m_picture(std::move(picture)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode, QIcon::State) override {
        constexpr double Corner = 3;
        if (ColorSet::IsDark()) {
            painter->save();
            painter->setRenderHint(QPainter::Antialiasing);
            painter->setPen(Qt::NoPen);
            painter->setBrush(QGuiApplication::palette().color(QPalette::Text));
            painter->drawRoundedRect(rect, Corner, Corner);
            painter->restore();
        }
        const QSize size = m_picture.size().boundedTo(rect.size());
        QRect place(QPoint(), size);
        place.moveCenter(rect.center());
        painter->drawPixmap(place, m_picture);
    }

    QIconEngine* clone() const override { return new GroundedEngine(*this); }

private:
    QPixmap m_picture;
};

} // namespace

QIcon Icons::Readable(const QPixmap& picture) {
    return picture.isNull() ? QIcon() : QIcon(new GroundedEngine(picture));
}

QIcon Icons::Get(const QString& name) {
    QFile file(QStringLiteral(":/icons/%1.svg").arg(name));
    return file.open(QIODevice::ReadOnly) ? QIcon(new LineArtEngine(file.readAll())) : QIcon();
}
