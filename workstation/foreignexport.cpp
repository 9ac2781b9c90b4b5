#include "workstation/foreignexport.h"

#include "host/base/problems.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencystorelistview.h"
#include "host/gui/guibase.h"
#include "host/gui/listsettings.h"
#include "interchange/format.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>

#include <algorithm>
#include <vector>

namespace ForeignExport {

namespace {

using Interchange::Account;
using Interchange::Format;

const QString FormatSetting = QStringLiteral("Export/Format"); ///< that was written last

QString tr(const char* text, const char* comment = nullptr, int n = -1) {
    return QCoreApplication::translate("ForeignExport", text, comment, n);
}

std::vector<const Format*> writtenFormats() {
    std::vector<const Format*> formats;
    std::ranges::copy_if(Interchange::Formats(), std::back_inserter(formats),
                         [](const Format* format) { return format->makeEncoder != nullptr; });
    return formats;
}

QStringList endingsOf(const Format& format) {
    return QString::fromLatin1(format.endings).split(QLatin1Char(' '));
}

QString filterOf(const Format& format) {
    return QStringLiteral("%1 (*%2)").arg(format.Name(), endingsOf(format).join(QStringLiteral(" *")));
}

/// The format that a dialog's filter names.
const Format& formatOf(const std::vector<const Format*>& formats, const QString& filter) {
    const auto found = std::ranges::find_if(
        formats, [&filter](const Format* format) { return filterOf(*format) == filter; });
    return found == formats.end() ? *formats.front() : **found;
}

/// Whether the file is to be written although it cannot hold all of the list.
bool isMeant(QWidget& window, const Format& format, const QString& path, const Account& lost) {
    QStringList facts;
    if (lost.refused > 0)
        facts << tr("%n entries cannot be written.", nullptr, static_cast<int>(lost.refused));
    if (const QString counts = lost.CountsText(); !counts.isEmpty())
        facts << tr("Lost or changed: %1.").arg(counts);
    if (facts.isEmpty())
        return true;
    QMessageBox box(QMessageBox::Question, tr("Export"),
                    tr("%1 cannot hold all of the list.").arg(format.Name()),
                    QMessageBox::Yes | QMessageBox::Cancel, &window);
    box.setInformativeText(facts.join(QLatin1Char('\n')));
    box.button(QMessageBox::Yes)->setText(tr("Write %1").arg(QFileInfo(path).fileName()));
    box.setDefaultButton(QMessageBox::Yes);
    return box.exec() == QMessageBox::Yes;
}

} // namespace

void AskAndWrite(QWidget& window, FrequencyStoreListView& view, const QString& listName) {
    const std::vector<const Format*> formats = writtenFormats();
    const Format* const last = Interchange::FormatOfId(ListSettings::LoadText(FormatSetting));
    QStringList filters;
    for (const Format* const format : formats)
        filters << filterOf(*format);
    const QPointer<QWidget> alive(view.GetWidget());
    QFileDialog dialog(&window, tr("Export %1 for Other Programs").arg(listName),
                       GuiBase::Instance().GetCurrentDirectory());
    dialog.setOptions(GuiBase::Instance().UseNativeDialogs());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilters(filters);
    const auto follow = [&](const QString& filter) {
        dialog.setDefaultSuffix(endingsOf(formatOf(formats, filter)).first().mid(1));
    };
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, follow);
    dialog.selectNameFilter(last ? filterOf(*last) : filters.first());
    follow(dialog.selectedNameFilter());
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty() || !alive)
        return;
    const Format& format = formatOf(formats, dialog.selectedNameFilter());
    const QString path = dialog.selectedFiles().constFirst();
    GuiBase::Instance().SetCurrentDirectory(QFileInfo(path).absolutePath());
    ListSettings::SaveText(FormatSetting, QString::fromLatin1(format.id));
    Write(window, view, format, path);
}

bool Write(QWidget& window, FrequencyStoreListView& view, const Format& format, const QString& path) {
    try {
        const std::optional<Account> written =
            Interchange::Write(format, path, view.Content(),
                               [&](const Account& lost) { return isMeant(window, format, path, lost); });
        if (written)
            emit FreqStore::Instance().Told(
                tr("%1 (%2): %3")
                    .arg(QFileInfo(path).fileName(), format.Name(),
                         tr("%n entries written", nullptr, static_cast<int>(written->entries))));
        return written.has_value();
    } catch (const RGException&) { // told by the writer
        return false;
    }
}

} // namespace ForeignExport
