#include "controls/frequencystore/results/resultdialogs.h"

#include "host/gui/guibase.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QMessageBox>

namespace ResultDialogs {
namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("ResultDialogs", text);
}

QString ask(const QString& caption, const QString& name, const char* ending) {
    return QFileDialog::getSaveFileName(nullptr, caption, name,
                                        tr("Search MC Data Results") + QLatin1String(ending), nullptr,
                                        GuiBase::Instance().UseNativeDialogs());
}

} // namespace

QString FileToSave(const QString& name) {
    return ask(tr("Save Search MC Data Results As"), name, " (*.xml)");
}

QString FileToExport(const QString& name) {
    return ask(tr("Export Search MC Data Results As"), name, " (*.csv)");
}

bool IsToTryAnotherFile(const QString& failedName) {
    // The question names memory items, as that of the memory channels does.
    const QString question =
        tr("Memory Items List: Could not open %1 for writing, do you want to save to a different file?");
    return QMessageBox::information(nullptr, QStringLiteral("File Error"), question.arg(failedName),
                                    QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes) == QMessageBox::Yes;
}

} // namespace ResultDialogs
