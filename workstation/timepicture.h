#pragma once

#include "workstation/detectionmarks.h"
#include "workstation/waterfall.h"

#include <QTimer>
#include <QWidget>

#include <memory>

class QMenu;

/// Detections over frequency and time, newest on top: each is as wide as its bandwidth, as high as it lasted,
/// and has the colour of its level. Behind them stand the levels of the power sweeps that were opened last.
/// It shows the frequencies that the frequency bar shows, and follows the newest detection until it is moved.
class TimePicture : public QWidget {
    Q_OBJECT

public:
    /// Shows the list of detections at that path of the value tree.
    explicit TimePicture(const QString& detectionsPath, QWidget* parent = nullptr);

    /// Where detections come from, by their number.
    using SourceOf = std::function<QString(unsigned id)>;
    /// Shows the list at another path from now on. Null when nothing is known of sources.
    void SetList(const QString& detectionsPath, SourceOf sourceOf);
    void SetRange(double fromHertz, double toHertz);
    /// The time on top and the span below it, both in microseconds.
    void SetTimes(double newest, double span);
    /// Shows the time of all that there is.
    void ShowAllTimes();
    /// Whether the newest detection stays on top.
    void SetFollowing(bool following);
    bool IsFollowing() const { return m_following; }
    /// Shows sweeps behind the detections, all of their time and frequencies; null takes them away.
    void SetWaterfall(std::shared_ptr<const Waterfall> waterfall);
    /// Shows only the detections of that source; an empty one shows all.
    void SetShownSource(const QString& source);
    QString GetShownSource() const { return m_shownSource; }
    /// Writes what is shown to a PNG file; false when it cannot be written.
    bool SavePicture(const QString& file);
    /// Adds the actions of the context menu.
    void AddActionsTo(QMenu& menu);

    /// Where frequencies and times are drawn, in pixels of the widget.
    QRect Plot() const;
    const FrequencyAxis& Frequencies() const { return m_frequencies; }
    const TimeAxis& Times() const { return m_times; }
    QSize sizeHint() const override { return {600, 260}; }
    QSize minimumSizeHint() const override { return {300, 60}; }

signals:
    void RangeChanged(double fromHertz, double toHertz);
    /// The operator asks for all frequencies.
    void EverythingWanted();
    /// A detection was clicked, by its place in the list.
    void RecordClicked(quint32 place);

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
    int leftMargin() const;
    void setAxes();
    void takeRange(const FrequencyAxis& axis);
    void followNewest();
    bool isShown(const DetectionMark& mark) const;
    QRect placeOf(const DetectionMark& mark) const;
    std::optional<quint32> markAt(const QPoint& position);
    QString tipAt(const QPoint& position);
    void render();
    void paintMarks(QPainter& painter);
    void paintTimes(QPainter& painter) const;
    void paintFrequencies(QPainter& painter) const;
    void paintLegend(QPainter& painter) const;
    void addSourcesTo(QMenu& menu);
    void askAndSave();

    DetectionMarks m_marks;
    std::shared_ptr<const Waterfall> m_waterfall;
    SourceOf m_sourceOf;
    QString m_shownSource;
    FrequencyAxis m_frequencies;
    TimeAxis m_times;
    bool m_following = true;
    QImage m_plot;       ///< null when something has changed
    double m_lowest = 0; ///< dB, of the detections' colours
    double m_highest = 1;
    QTimer m_refresh; ///< many changes are one picture
    QPoint m_pressed;
    FrequencyAxis m_pressedFrequencies;
    TimeAxis m_pressedTimes;
    bool m_dragging = false;
};
