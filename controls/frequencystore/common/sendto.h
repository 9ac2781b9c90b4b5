#pragma once

#include "host/freqstorexml/frequencystoreentry.h"

#include <QVector>

#include <functional>

class FreqStoreListViewButtonBar;
class HalvoNodeMediatorCtrl;

/// Entries of one list go into another: the lists of interest and of memory channels take them. What is there
/// already is not doubled: an entry is there when one lies within the tolerance of its frequency.
namespace SendTo {

struct Target {
    QString name;
    HalvoNodeMediatorCtrl* controller; ///< not owned
};
/// The registered lists that take entries, in order of registration.
std::vector<Target> Targets();

struct Outcome {
    qsizetype added = 0;
    qsizetype there = 0;    ///< was there already, or came twice
    qsizetype unusable = 0; ///< has no frequency that is one
};
/// `tolerance` in Hz.
Outcome Send(const QVector<FreqStoreXml::FrequencyStoreEntry>& entries, HalvoNodeMediatorCtrl& target,
             double tolerance);

constexpr double MaxTolerance = 1e6; ///< Hz
/// In Hz; the operator's, kept with the settings.
double Tolerance();
void SetTolerance(double hertz);

/// Shows the bar's action and gives it a menu of the targets and of the tolerance. `entries` are those of the
/// selection, asked for when a target is chosen; the bar tells what became of them.
void Offer(FreqStoreListViewButtonBar& bar,
           const std::function<QVector<FreqStoreXml::FrequencyStoreEntry>()>& entries);

} // namespace SendTo
