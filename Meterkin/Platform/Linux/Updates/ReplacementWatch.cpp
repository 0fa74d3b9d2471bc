#include "Platform/Linux/Updates/ReplacementWatch.h"

#include "Platform/Linux/Process/ProgramLocation.h"
#include "Platform/Log.h"

#include <QFile>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>

#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/stat.h>

namespace {

Descriptor openProgram(const QByteArray &file)
{
    return Descriptor(open(file.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
}

bool haveSameContent(const Descriptor &one, const Descriptor &other)
{
    constexpr std::size_t blockSize = 4096;
    std::array<char, blockSize> first;
    std::array<char, blockSize> second;
    for (off_t place = 0;;) {
        const ssize_t size = pread(one.number(), first.data(), blockSize, place);
        if (size < 0 || pread(other.number(), second.data(), blockSize, place) != size
            || std::memcmp(first.data(), second.data(), static_cast<std::size_t>(size)) != 0)
            return false;
        if (size == 0)
            return true;
        place += size;
    }
}

} // namespace

ReplacementWatch::ReplacementWatch(QObject *parent)
    : QObject(parent)
    , m_file(QFile::encodeName(programToStart()))
    , m_original(openProgram(QFile::encodeName(programFile().path)))
    , m_events(inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
{
    m_quiet.setSingleShot(true);
    m_quiet.setInterval(Quiet);
    connect(&m_quiet, &QTimer::timeout, this, &ReplacementWatch::tell);
    // The folder, since a name is removed before it is given anew, or is given by a rename.
    const QByteArray folder = m_file.left(m_file.lastIndexOf('/') + 1);
    if (inotify_add_watch(m_events.number(), folder.constData(),
                          IN_CLOSE_WRITE | IN_MOVED_TO | IN_ONLYDIR)
        < 0) {
        qCDebug(logUpdates) << "cannot watch" << folder << std::strerror(errno);
        return;
    }
    m_notifier.emplace(m_events.number(), QSocketNotifier::Read);
    connect(&*m_notifier, &QSocketNotifier::activated, this, &ReplacementWatch::read);
}

bool ReplacementWatch::isReplaced() const
{
    const Descriptor present = openProgram(m_file);
    struct stat before { };
    struct stat now { };
    if (fstat(m_original.number(), &before) != 0 || fstat(present.number(), &now) != 0
        || !S_ISREG(now.st_mode) || (now.st_mode & S_IXUSR) == 0)
        return false;
    const bool isSameFile = before.st_dev == now.st_dev && before.st_ino == now.st_ino;
    return !isSameFile && (before.st_size != now.st_size || !haveSameContent(m_original, present));
}

void ReplacementWatch::read()
{
    const QByteArray name = m_file.mid(m_file.lastIndexOf('/') + 1);
    alignas(inotify_event) std::array<char, 4096> events;
    ssize_t size = 0;
    while ((size = ::read(m_events.number(), events.data(), events.size())) > 0) {
        for (const char *place = events.data(); place < events.data() + size;) {
            const auto *event = reinterpret_cast<const inotify_event *>(place);
            // Events that were dropped may have been ours.
            if ((event->mask & IN_Q_OVERFLOW) != 0 || (event->len != 0 && name == event->name))
                m_quiet.start();
            place += sizeof(inotify_event) + event->len;
        }
    }
}

void ReplacementWatch::tell()
{
    const bool isOther = isReplaced();
    qCDebug(logUpdates) << m_file << "was written; another program:" << isOther;
    if (isOther)
        emit replaced();
}
