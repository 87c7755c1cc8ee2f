#pragma once

#include "hearth/appversion.h"
#include "printerslib_export.h"

/// Makes the library known to the system: loading the library constructs the one object of this
/// class, which registers the library's version and translations. Clients need no call of theirs.
class PRINTERSLIB_EXPORT PrintersLib
{
public:
    /// Registers the version, unless that has been done, and the translations. For the library
    /// itself.
    PrintersLib();
    ~PrintersLib() = default;
    Q_DISABLE_COPY(PrintersLib)

    /// The version as it was registered: "5.0.28" and the moment of the build in ISO date form. Any
    /// thread may call it once the library is loaded. Code that runs before the library's static
    /// construction has finished, as static construction of another library may, must not call it.
    static hearth::AppVersion version();

private:
    static hearth::AppVersion _version;
};
