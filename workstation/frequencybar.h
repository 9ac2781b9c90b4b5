#pragma once

#include "workstation/bandplan.h"
#include "workstation/frequencyaxis.h"
#include "workstation/noibands.h"

#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <memory>

class FrequencyStoreListView;
class QMenu;

/// The frequency bar: one line of marks per registered list over a logarithmic frequency axis, with the bands
/// of interest and a band plan behind them. Wheel and keys zoom, dragging moves, hovering names what is
/// there, a double click shows everything. A click tunes: on a mark to its entry with all settings, beside
/// one to the nearest step. The context menu hides and moves lines.
class FrequencyBar : public QWidget, public IHasHMap {
    Q_OBJECT

public:
    explicit FrequencyBar(QWidget* parent = nullptr);
    ~FrequencyBar() override;

    /// Adds or removes the line of a registered list; a list without a line gets none. The selection of the
    /// view, if there is one, is marked.
    void AddList(int listId, FrequencyStoreListView* view = nullptr);
    void RemoveList(int listId);
    /// Shows the range from the lowest to the highest entry of the lines that are shown.
    void FitAll();
    /// Shows the range of what is selected, whichever list it is of; false when nothing is.
    bool ZoomToSelection();
    void SetRange(double fromHertz, double toHertz);
    double From() const { return m_axis.From(); }
    double To() const { return m_axis.To(); }
    /// Shades the bands of interest behind all lines, and follows them; they outlive the bar.
    void SetBands(const NoiBands& bands);
    /// The region (1 to 3) whose band plan is shown; 0 shows none.
    void SetRegion(int region);
    int GetRegion() const { return m_region; }
    /// Marks the frequency (Hz) that the receiver is tuned to.
    void SetTuned(double hertz);
    double GetTuned() const { return m_tuned; }
    /// A click beside all marks means a multiple of this frequency (Hz).
    void SetStep(double hertz) { m_step = hertz; }
    double GetStep() const { return m_step; }

    /// Whether a list's line is shown; a line by its place from the top, -1 for none.
    void SetLineShown(int listId, bool shown);
    bool IsLineShown(int listId) const;
    void MoveLine(int listId, int places);
    /// Marks only entries that the filters of the views show. It is remembered with the lines.
    void SetShownOnly(bool only);
    bool IsShownOnly() const { return m_shownOnly; }
    /// Identifiers of the lists whose lines are shown, from the top.
    std::vector<int> ShownLists() const;
    /// Takes order and visibility of lines as they were, and keeps them from now on.
    void RememberLines();
    /// Adds the actions of the context menu; `listId` is that of the line which it is for, or 0.
    void AddActionsTo(QMenu& menu, int listId);

    /// Where the marks of a list are, in pixels of the widget; empty when its line is not shown.
    QRect LineRect(int listId) const;
    /// Left edge of the axis, in pixels of the widget.
    int AxisLeft() const { return m_labelWidth; }
    double MapToPixel(double hertz) const override { return m_axis.MapToPixel(hertz); }
    double MapToFrequency(double pixel) const override { return m_axis.MapToFrequency(pixel); }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {300, sizeHint().height()}; }
    /// What the bar shows, in words.
    QString Summary() const;
    /// Name of a list's line, and in words how many entries it marks in which range.
    QString LineName(int listId) const;
    QString LineSummary(int listId);

signals:
    /// A frequency was clicked that is to be tuned to; `listId` is the list whose entry lies there, or 0.
    void Clicked(double hertz, int listId);
    /// The receiver was tuned to the entry at a frequency by a click on its mark.
    void EntryTuned(double hertz, int listId);
    void RangeChanged(double fromHertz, double toHertz);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool event(QEvent* event) override;

private:
    struct Line {
        int listId;
        QString name;
        std::unique_ptr<PixStateVector> pixels;
        bool isShown = true;
        FrequencyStoreListView* view = nullptr;
        QPointer<QWidget> widget{}; ///< of the view, which may end before
        bool viewChanged = false;
    };
    /// Pixels from the first to the last that a band touches.
    struct Shade {
        int first;
        int last;
    };
    struct Hit {
        Line* line = nullptr;
        quint32 item = 0;
        quint32 count = 0;
        double hertz = 0;
    };

    int lineHeight() const;
    int lineTop(int row) const;
    int shownCount() const;
    int planHeight() const;
    Line* find(int listId);
    const Line* find(int listId) const;
    Line* lineAt(int y);
    void mapLines();
    void computeLines();
    void arrange();
    void placeRemembered();
    void keepLines() const;
    void mapBands();
    void lookAtView(int listId);
    void takeSelections();
    void takeClick();
    void takeWaitingClick();
    Hit hitTest(const QPoint& position);
    QString textOf(const Hit& hit) const;
    QString tipAt(const QPoint& position);
    QString bandText(int x) const;
    void paintBands(QPainter& painter, int top, int height, const QColor& color) const;
    void paintPlan(QPainter& painter) const;
    void paintLine(QPainter& painter, const Line& line, int top) const;
    void paintMarks(QPainter& painter, const PixStateVector& pixels, int top, int height) const;
    void paintAxis(QPainter& painter) const;
    void paintTickTexts(QPainter& painter, int top) const;
    void paintTuned(QPainter& painter) const;

    FrequencyAxis m_axis;
    std::vector<Line> m_lines; ///< from the top
    const NoiBands* m_bands = nullptr;
    std::vector<Shade> m_shades;
    BandPlan m_plan;
    int m_region = 0;
    double m_tuned = 0;
    double m_step = 1000;
    int m_labelWidth;
    QPoint m_pressed;
    double m_pressedFrom = 0;
    double m_pressedTo = 0;
    bool m_dragging = false;
    bool m_doubleClicked = false;
    bool m_remembers = false;
    bool m_shownOnly = false;
    QTimer m_refresh;      ///< many changes are one repaint
    QTimer m_selections;   ///< many changes of selections and filters are one look at them
    QTimer m_click;        ///< runs until a click can no longer become a double click
    bool m_mapped = false; ///< lines have another scale since they were computed
};
