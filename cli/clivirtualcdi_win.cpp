// Windows has no pseudo-terminals, so the virtual CDI is not served there.
#include "clicommands.h"

const char *CliCommands::virtualCdiHelp()
{
    return "                                     Linux only: serves a CDI on a pseudo-terminal, which\n"
           "                                     Windows does not have\n";
}

int CliCommands::virtualCdi(const QStringList &arguments)
{
    Q_UNUSED(arguments)
    return usage(QStringLiteral("virtual-cdi needs a pseudo-terminal, which Windows does not have; "
                                "it runs on Linux"));
}
