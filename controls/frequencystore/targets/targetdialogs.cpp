#include "controls/frequencystore/targets/targetdialogs.h"

#include "host/gui/guibase.h"

#include <QCoreApplication>
#include <QFileDialog>

namespace TargetDialogs {
namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("TargetDialogs", text);
}

QString askForFile(const QString& title, const QString& directory, const QString& filter) {
    return QFileDialog::getOpenFileName(nullptr, title, directory, filter, nullptr,
                                        GuiBase::Instance().UseNativeDialogs());
}

QString askForName(const QString& directory, const QString& filter, const QString& extension) {
    QFileDialog dialog(nullptr, tr("Select Filename for saving"), directory, filter);
    dialog.setObjectName(QStringLiteral("SaveTargetList"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setModal(true);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return QString();
    const QString name = dialog.selectedFiles().first();
    return name.contains(extension) ? name : name + extension;
}

} // namespace

QString FileToRead(const QString& directory) {
    return askForFile(tr("Select file to read target list from"), directory,
                      tr("Target List Files (*.xml *.sfl *.ltl)"));
}

QString FileToImport(const QString& directory) {
    return askForFile(tr("Select file to import target list from"), directory,
                      tr("Target List Files (*.csv)"));
}

QString FileToSave(const QString& directory) {
    return askForName(directory, tr("Local Target List (*.xml)"), QStringLiteral(".xml"));
}

QString FileToExport(const QString& directory) {
    return askForName(directory, tr("Export Local Target List (*.csv)"), QStringLiteral(".csv"));
}

} // namespace TargetDialogs
