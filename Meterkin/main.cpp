#include "CommandLine.h"
#include "MeterkinApp.h"

int main(int argc, char **argv)
{
    if (const auto status = answerCommandLine(argc, argv))
        return *status;
    return MeterkinApp(argc, argv).run();
}
