#include "controls/frequencystore/noi/noidialogs.h"

#include "controls/frequencystore/files/filekind.h"
#include "host/gui/guibase.h"

#include <QCoreApplication>
#include <QFileDialog>

namespace NoiDialogs {
namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("NoiDialogs", text);
}

/// A name without an ending gets `suffix`.
QString ask(QFileDialog::AcceptMode mode, const QString& title, const QString& directory,
            const QString& filter, const char* suffix) {
    QFileDialog dialog(nullptr, title, directory, filter);
    dialog.setOptions(GuiBase::Instance().UseNativeDialogs());
    dialog.setAcceptMode(mode);
    dialog.setFileMode(mode == QFileDialog::AcceptOpen ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    dialog.setDefaultSuffix(QString::fromLatin1(suffix));
    if (dialog.exec() != QDialog::Accepted)
        return QString();
    return dialog.selectedFiles().value(0);
}

} // namespace

QString FileToOpen(const QString& directory) {
    return ask(QFileDialog::AcceptOpen, tr("Select file to read NOI Frequencies from"), directory,
               QStringLiteral("NOI Files (*.xml *.noi)"), "");
}

QString FileToImport(const QString& directory) {
    return ask(QFileDialog::AcceptOpen, tr("Select file to import NOI Frequencies from"), directory,
               QStringLiteral("NOI Files (*.csv)"), "");
}

QString FileToSave(const QString& directory) {
    const QString path = ask(QFileDialog::AcceptSave, tr("Select Filename for saving"), directory,
                             tr("NOI Files (*.xml)"), "xml");
    return path.isEmpty() || PathContains(path, ".xml") ? path : path + QStringLiteral(".xml");
}

QString FileToExport(const QString& directory) {
    return ask(QFileDialog::AcceptSave, tr("Select Filename for saving"), directory,
               tr("NOI Files") + QStringLiteral(" (*.csv)"), "csv");
}

} // namespace NoiDialogs
