#include "commands.h"
#include "support.h"

int runEval(const QStringList &arguments)
{
    Q_UNUSED(arguments)
    return tool::WrongUsage;
}
