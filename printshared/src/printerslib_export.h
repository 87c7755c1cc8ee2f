#pragma once

#include <QtGlobal>

/// Marks the public surface of the library; everything else is hidden.
/// The tests compile the same objects, so there is no import form.
#define PRINTERSLIB_EXPORT Q_DECL_EXPORT
