#pragma once

/// Marks the public surface of the library; everything else is hidden.
/// The tests compile the same objects, so there is no import form. Needs no Qt, as `bbcpp` has
/// none.
#define PRINTERSLIB_EXPORT __attribute__((visibility("default")))
