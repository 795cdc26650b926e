#include "cstartup.h"

#ifdef Q_OS_WIN
#include <windows.h>

#include <cstdio>

// A window program on Windows has no console of its own: the answers to --help, --version and -v
// go to the console it was started from, unless its output already goes somewhere else.
static void useParentConsole()
{
    if (::GetStdHandle(STD_OUTPUT_HANDLE) || !::AttachConsole(ATTACH_PARENT_PROCESS))
        return;
    std::freopen("CONOUT$", "w", stdout);
    std::freopen("CONOUT$", "w", stderr);
}
#endif

int main(int argc, char *argv[])
{
#ifdef Q_OS_WIN
    useParentConsole();
#endif
    CEventLoopSteps steps;
    CStartup startup(steps);
    return startup.run(argc, argv);
}
