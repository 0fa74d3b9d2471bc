// The least that a monitor of processors and memory can cost: sleeps, reads both files, takes the
// numbers out of them. Argument: seconds between two readings.
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

static char text[65536];

static bool readText(int file)
{
    const ssize_t count = pread(file, text, sizeof text - 1, 0);
    text[count > 0 ? count : 0] = 0;
    return count > 0;
}

static unsigned long long processorTicks()
{
    unsigned long long sum = 0;
    for (char *at = text; strncmp(at, "cpu", 3) == 0; ++at) {
        at = strchr(at, ' ');
        for (int field = 0; field < 8; ++field)
            sum += strtoull(at, &at, 10);
        if (!(at = strchr(at, '\n')))
            break;
    }
    return sum;
}

static unsigned long long numberAfter(const char *name)
{
    const char *const at = strstr(text, name);
    return at ? strtoull(at + strlen(name), nullptr, 10) : 0;
}

int main(int, char **arguments)
{
    const unsigned interval = static_cast<unsigned>(atoi(arguments[1]));
    const int stat = open("/proc/stat", O_RDONLY);
    const int meminfo = open("/proc/meminfo", O_RDONLY);
    volatile unsigned long long seen; // or the compiler leaves the arithmetic out
    while (readText(stat)) {
        seen = processorTicks();
        if (!readText(meminfo))
            break;
        seen = numberAfter("MemTotal:") - numberAfter("MemAvailable:");
        sleep(interval);
    }
    return 1;
}
