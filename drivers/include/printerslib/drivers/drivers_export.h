#pragma once

/// Marks the public surface of the library; everything else is hidden.
/// The tests compile the same objects, so there is no import form.
#define PRINTERSLIB_DRIVERS_EXPORT __attribute__((visibility("default")))
