#pragma once

/// What assistive tools read of the frequency bar.
namespace FrequencyBarAccess {

/// Lets bars that are made be read; more than one call is one.
void Install();

} // namespace FrequencyBarAccess
