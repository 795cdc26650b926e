#include "cstartup.h"

int main(int argc, char *argv[])
{
    CEventLoopSteps steps;
    CStartup startup(steps);
    return startup.run(argc, argv);
}
