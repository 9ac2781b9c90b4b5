#include "workstation/icons.h"

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

/// Draws a drawing anew each time, with the text colour in the place of "currentColor".
class LineArtEngine : public QIconEngine {
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

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap result(size);
        result.fill(Qt::transparent);
        QPainter painter(&result);
        paint(&painter, result.rect(), mode, state);
        return result;
    }

    QIconEngine* clone() const override { return new LineArtEngine(*this); }

private:
    QByteArray m_drawing; ///< SVG text
};

} // namespace

QIcon Icons::Get(const QString& name) {
    QFile file(QStringLiteral(":/icons/%1.svg").arg(name));
    return file.open(QIODevice::ReadOnly) ? QIcon(new LineArtEngine(file.readAll())) : QIcon();
}
