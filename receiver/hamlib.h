#pragma once

// The radio library; only sources of this room include it, since its names are in no namespace.
#include <hamlib/rig.h>

/// Makes the library ready, once, silent and with all its models. It sets the locale of numbers, so it is
/// called before there are threads that use the library.
void LoadHamlib();
