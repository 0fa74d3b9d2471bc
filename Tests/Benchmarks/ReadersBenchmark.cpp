#include "Platform/Linux/Sensors/PageCounters.h"
#include "Platform/Linux/Sensors/ProcessorTicks.h"
#include "Sampling/CPUReader.h"
#include "Sampling/MemoryReader.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace {

double medianMicroseconds(const std::function<void()> &action)
{
    using Clock = std::chrono::steady_clock;
    std::vector<double> times(5000);
    for (double &time : times) {
        const Clock::time_point begin = Clock::now();
        action();
        time = std::chrono::duration<double, std::micro>(Clock::now() - begin).count();
    }
    const auto middle = times.begin() + std::ssize(times) / 2;
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
}

/// A reader compared with a bare read of the same file.
void compare(const char *name, const std::string &path, const std::function<void()> &read)
{
    std::vector<char> buffer(1 << 20);
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    const double bare = medianMicroseconds([&] {
        if (pread(descriptor, buffer.data(), buffer.size(), 0) <= 0)
            std::perror("pread");
    });
    close(descriptor);
    const double whole = medianMicroseconds(read);
    std::printf("%-12s reader %8.2f us   bare read %8.2f us   beyond it %7.2f us\n", name, whole,
                bare, whole - bare);
}

QByteArray thousandCores()
{
    QByteArray text = "cpu  1234567890 12345678 1234567890 1234567890 12345678 0 1234567 0 0 0\n";
    for (int i = 0; i < 1024; ++i)
        text += "cpu" + QByteArray::number(i)
            + " 1234567 12345 1234567 123456789 12345 0 12345 0 0 0\n";
    return text + "intr 123456789" + QByteArray(" 0").repeated(8192) + "\nctxt 123456789\n";
}

} // namespace

/// Median times of the readers on this machine and on a made-up one of 1,024 cores.
int main()
{
    CPUInfo info;
    CPUReader processors(std::make_unique<LinuxProcessorTicks>());
    compare("processors", "/proc/stat", [&] { processors.read(info); });

    MemoryReader memory(1, std::make_unique<LinuxPageCounters>());
    compare("memory", "/proc/meminfo", [&] { memory.read(); });

    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("stat")));
    if (!file.open(QIODevice::WriteOnly) || file.write(thousandCores()) < 0)
        return 1;
    file.close();
    const std::string path = file.fileName().toStdString();
    CPUReader many(std::make_unique<LinuxProcessorTicks>(path));
    compare("1,024 cores", path, [&] { many.read(info); });
}
