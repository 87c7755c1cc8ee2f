#include "log/loghelper.h"

QDebug operator<<(QDebug debug, LogTab)
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << '\t';
    return debug;
}

QDebug operator<<(QDebug debug, const LogList &list)
{
    const QDebugStateSaver saver(debug);
    debug.nospace().noquote() << list.items.join(QLatin1String(", "));
    return debug;
}

QDebug operator<<(QDebug debug, const LogBinary &binary)
{
    const QDebugStateSaver saver(debug);
    debug.nospace().noquote() << QString::fromLatin1(binary.bytes.toHex(' ').toUpper());
    return debug;
}
