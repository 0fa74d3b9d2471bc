#include "MeterkinApp.h"

int main(int argc, char **argv)
{
    return MeterkinApp(argc, argv).run();
}
