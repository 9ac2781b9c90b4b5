#pragma once

#include "host/freqlist/pixstatevector.h"
#include "workstation/noibands.h"

#include <QTimer>
#include <QWidget>

#include <map>
#include <memory>

/// The frequency bar: one line of marks per registered list over a logarithmic frequency axis, with the bands
/// of interest shaded behind them. The wheel zooms, dragging moves, a click tunes, hovering names the entry,
/// a double click shows everything.
class FrequencyBar : public QWidget, public IHasHMap {
    Q_OBJECT

public:
    explicit FrequencyBar(QWidget* parent = nullptr);
    ~FrequencyBar() override;

    /// Adds or removes the line of a registered list; a list without a line gets none.
    void AddList(int listId);
    void RemoveList(int listId);
    /// Shows the range from the lowest to the highest entry.
    void FitAll();
    void SetRange(double fromHertz, double toHertz);
    /// Shades the bands of interest behind all lines, and follows them; they outlive the bar.
    void SetBands(const NoiBands& bands);
    /// Marks the frequency (Hz) that the receiver is tuned to.
    void SetTuned(double hertz);

    double MapToPixel(double hertz) const override;
    double MapToFrequency(double pixel) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    /// A frequency was clicked; `listId` is the list whose entry lies there, or 0.
    void Clicked(double hertz, int listId);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    bool event(QEvent* event) override;

private:
    struct Line {
        QString name;
        std::unique_ptr<PixStateVector> pixels;
    };
    /// Pixels from the first to the last that a band touches.
    struct Shade {
        int first;
        int last;
    };
    struct Hit {
        int listId = 0;
        double hertz = 0;
        QString text;
    };

    int barWidth() const;
    int lineTop(int row) const;
    void mapLines();
    void computeLines();
    void mapBands();
    QString bandText(int x) const;
    void paintBands(QPainter& painter, int top, int height, const QColor& color) const;
    void paintLine(QPainter& painter, const Line& line, int top) const;
    void paintAxis(QPainter& painter) const;
    std::vector<double> ticks() const;
    Hit hitTest(const QPoint& position) const;

    std::map<int, Line> m_lines;
    const NoiBands* m_bands = nullptr;
    std::vector<Shade> m_shades;
    double m_from;
    double m_to;
    double m_tuned = 0;
    QPoint m_pressed;
    double m_pressedFrom = 0;
    double m_pressedTo = 0;
    bool m_dragging = false;
    QTimer m_refresh;      ///< many changes are one repaint
    bool m_mapped = false; ///< lines have another scale since they were computed
};
