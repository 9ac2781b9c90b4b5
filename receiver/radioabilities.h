#pragma once

#include "receiver/hamlib.h"
#include "receiver/receiversettings.h"

/// What the radio library knows of an open radio, in the words of receivers.
namespace RadioAbilities {

std::vector<ReceiverAbility> Of(RIG& rig);
/// Whether a frequency (Hz) lies in one of its ranges; a radio that names none takes all.
bool Receives(const RIG& rig, double hertz);
/// The smallest step (Hz) in which it is tuned; at least 1.
double SmallestStep(const RIG& rig);
/// "USB"; empty for none.
QString ModeName(rmode_t mode);
/// RIG_MODE_NONE for a name that none has. FM of a broadcast's width (Hz) is WFM where the radio has that.
rmode_t ModeOf(const RIG& rig, const QString& name, long width);
/// The passband of a mode that is nearest to a width (Hz); the normal one for a width of 0.
pbwidth_t PassbandOf(const RIG& rig, rmode_t mode, long width);
bool HasOffset(const RIG& rig);
/// The antenna in use, from 1; 0 when the radio does not say.
int ReadAntenna(RIG& rig);

} // namespace RadioAbilities
