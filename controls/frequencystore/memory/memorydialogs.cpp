#include "controls/frequencystore/memory/memorydialogs.h"

#include "host/gui/guibase.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>

namespace MemoryDialogs {
namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("MemoryDialogs", text);
}

} // namespace

QString FileToOpen() {
    return QFileDialog::getOpenFileName(nullptr, tr("Select file to read Memory Channels from"), QString(),
                                        tr("Memory Channels (*.xml *.sfl *.pij)"), nullptr,
                                        GuiBase::Instance().UseNativeDialogs());
}

bool IsToSaveChangedChannels() {
    if (!qobject_cast<QApplication*>(QCoreApplication::instance()))
        return false;
    QMessageBox box(QMessageBox::Information, tr("Memory Channels Changed"),
                    tr("Memory Channels have been Saved in Frequency Store without saving.\n Do you want to "
                       "save your settings?"));
    box.setObjectName(QStringLiteral("Memchannelschanged"));
    return box.exec() == QMessageBox::Yes;
}

} // namespace MemoryDialogs
