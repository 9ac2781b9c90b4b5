#pragma once

#include <QObject>
#include <QStringList>

class QMimeData;
class QWidget;

/// Lets files be dropped anywhere on a window, whose it is. What is no file of this machine, or a folder, is
/// told and left out.
class FileDrop : public QObject {
    Q_OBJECT

public:
    explicit FileDrop(QWidget& window);

signals:
    void Dropped(const QStringList& paths);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void take(const QMimeData& data);
};
