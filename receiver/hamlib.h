#pragma once

// The radio library; only sources of this room include it, since its names are in no namespace.
#include <hamlib/rig.h>

/// Makes the library ready, once, silent and with all its models. Any thread may call it.
void LoadHamlib();
