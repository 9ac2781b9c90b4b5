#include "workstation/filedrop.h"

#include "host/base/longwork.h"
#include "host/base/problems.h"

#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QPointer>
#include <QTimer>
#include <QUrl>
#include <QWidget>

FileDrop::FileDrop(QWidget& window) : QObject(&window) {
    window.setAcceptDrops(true);
    window.installEventFilter(this);
}

bool FileDrop::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::DragEnter && event->type() != QEvent::DragMove &&
        event->type() != QEvent::Drop)
        return QObject::eventFilter(watched, event);
    auto& drop = static_cast<QDropEvent&>(*event);
    const bool hasFiles = drop.mimeData()->hasUrls();
    drop.setDropAction(Qt::CopyAction); // whatever is asked for, files stay where they are
    drop.setAccepted(hasFiles);
    if (hasFiles && event->type() == QEvent::Drop)
        take(*drop.mimeData());
    return true;
}

void FileDrop::take(const QMimeData& data) {
    QStringList paths;
    for (const QUrl& url : data.urls()) {
        const QString path = url.toLocalFile();
        if (path.isEmpty())
            Problems::Report("filedrop", {url.toDisplayString(), 0, tr("is no file of this machine")});
        else if (QFileInfo(path).isDir())
            Problems::Report("filedrop", {path, 0, tr("is a folder; drop the files in it")});
        else
            paths << path;
    }
    // Whoever dropped them waits until this ends, and a file may be asked about.
    if (!paths.isEmpty())
        QTimer::singleShot(0, this, [this, paths] {
            LongWork::WhenDone([drop = QPointer(this), paths] {
                if (drop)
                    emit drop->Dropped(paths);
            });
        });
}
