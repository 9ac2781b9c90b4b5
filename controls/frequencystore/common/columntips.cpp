#include "controls/frequencystore/common/columntips.h"

#include <QCoreApplication>
#include <QTreeWidgetItem>

namespace {

struct Row {
    const char* title;
    const char* tip;
};
constexpr Row Rows[] = {
    {"AFC", QT_TRANSLATE_NOOP("ColumnTips", "Automatic frequency control: the receiver follows the signal")},
    {"Attenuation", QT_TRANSLATE_NOOP("ColumnTips", "Attenuation before the receiver's input, in dB")},
    {"BFOFrequency",
     QT_TRANSLATE_NOOP("ColumnTips", "Beat frequency oscillator: the pitch at which CW is heard, in Hz")},
    {"Bandwidth", QT_TRANSLATE_NOOP("ColumnTips", "Width of the signal or of the receiver's filter")},
    {"Class. Bandwidth", QT_TRANSLATE_NOOP("ColumnTips", "Bandwidth that the classifier measured")},
    {"Class. Confidence", QT_TRANSLATE_NOOP("ColumnTips", "How sure the classifier is, in per cent")},
    {"Class. Frequency", QT_TRANSLATE_NOOP("ColumnTips", "Centre frequency that the classifier measured")},
    {"Class. Modulation", QT_TRANSLATE_NOOP("ColumnTips", "Modulation that the classifier recognised")},
    {"Class. Trans.", QT_TRANSLATE_NOOP("ColumnTips", "Transmission system that the classifier recognised")},
    {"Confidence", QT_TRANSLATE_NOOP("ColumnTips", "How sure the classifier is, in per cent")},
    {"Demodulation",
     QT_TRANSLATE_NOOP("ColumnTips", "How the receiver makes the signal audible: AM, FM, USB, ...")},
    {"From", QT_TRANSLATE_NOOP("ColumnTips", "When the signal was first seen")},
    {"ID", QT_TRANSLATE_NOOP("ColumnTips", "Number or name of the emission")},
    {"Level", QT_TRANSLATE_NOOP("ColumnTips", "Level at the receiver's input, in dBµV")},
    {"Lock State", QT_TRANSLATE_NOOP("ColumnTips", "Whether the classifier is locked to the signal")},
    {"Man. Attenuation",
     QT_TRANSLATE_NOOP("ColumnTips", "Whether the attenuation is set by hand instead of by the receiver")},
    {"OutputIFPath",
     QT_TRANSLATE_NOOP("ColumnTips", "Which intermediate frequency (IF) the receiver puts out")},
    {"Priority",
     QT_TRANSLATE_NOOP("ColumnTips", "How important the target is; its mark has the colour of it")},
    {"Shift", QT_TRANSLATE_NOOP("ColumnTips", "Distance of the two tones of frequency shift keying, in Hz")},
    {"Signal Class", QT_TRANSLATE_NOOP("ColumnTips", "What kind of signal is expected")},
    {"Signal Time", QT_TRANSLATE_NOOP("ColumnTips", "When the classifier locked to the signal")},
    {"Threatclass", QT_TRANSLATE_NOOP("ColumnTips", "How much of a threat the target is held to be")},
    {"Threshold", QT_TRANSLATE_NOOP("ColumnTips", "Squelch: a level below it is not heard, in dBµV")},
    {"Transmission System",
     QT_TRANSLATE_NOOP("ColumnTips", "The transmission system that is expected, such as a modem's")},
    {"Until", QT_TRANSLATE_NOOP("ColumnTips", "When the signal was last seen")},
    {"Use Threshold", QT_TRANSLATE_NOOP("ColumnTips", "Whether the squelch is on")},
};

} // namespace

QString ColumnTips::Of(const char* title) {
    const auto* row = std::find_if(std::begin(Rows), std::end(Rows),
                                   [title](const Row& known) { return qstrcmp(known.title, title) == 0; });
    return row == std::end(Rows) ? QString() : QCoreApplication::translate("ColumnTips", row->tip);
}

void ColumnTips::Set(QTreeWidgetItem& headings, int column, const char* title) {
    const QString name = headings.text(column);
    const QString tip = Of(title);
    headings.setToolTip(column, tip.isEmpty() ? name : name + QStringLiteral(": ") + tip);
}
