#pragma once

#include <QIcon>
#include <QString>

/// The program's own icons, drawn as line art in one colour. Each is painted in the text colour of the
/// application's palette at the time of painting, so that icons that were handed out follow a change from
/// light to dark by themselves.
class Icons {
public:
    /// The icon of workstation/icons/<name>.svg; a null icon when there is none of that name. The application
    /// must exist.
    static QIcon Get(const QString& name);
    /// A picture of fixed colours, such as a list's, on a light ground where the palette is dark.
    static QIcon Readable(const QPixmap& picture);
};
