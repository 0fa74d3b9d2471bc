#include "Platform/Linux/Sensors/KernelFile.h"

#include "Platform/Log.h"

#include <cerrno>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace {

constexpr std::size_t SmallestBuffer = 4096;
constexpr std::size_t LargestBuffer = std::size_t{16} << 20; // far beyond any real file

ssize_t readFromStart(int descriptor, char *buffer, std::size_t size)
{
    for (;;) {
        const ssize_t count = pread(descriptor, buffer, size, 0);
        if (count >= 0 || errno != EINTR)
            return count;
    }
}

} // namespace

KernelFile::KernelFile(std::string path)
    : m_path(std::move(path))
{
}

KernelFile::~KernelFile()
{
    close();
}

std::optional<std::string_view> KernelFile::read()
{
    if (m_capacity > SmallestBuffer && m_length < m_capacity / 4)
        setCapacity(0); // the text was large once
    m_error = 0;
    while (open()) {
        const ssize_t count = readFromStart(m_descriptor, m_buffer, m_capacity);
        if (count > 0 && count < static_cast<ssize_t>(m_capacity)) {
            m_length = static_cast<std::size_t>(count);
            return std::string_view(m_buffer, m_length);
        }
        if (count < 0)
            m_error = errno;
        // A full buffer may not be the whole text, and the rest would be from a later moment.
        const bool isFull = count == static_cast<ssize_t>(m_capacity);
        if (!isFull || m_capacity >= LargestBuffer || !setCapacity(2 * m_capacity))
            break;
    }
    close();
    return std::nullopt;
}

void KernelFile::warnOnce(const char *consequence)
{
    if (!std::exchange(m_hasWarned, true))
        qCWarning(logSampling, "%s %s%s: %s", m_path.c_str(),
                  m_error == 0 ? "is empty or in an unknown format" : "cannot be read: ",
                  m_error == 0 ? "" : std::strerror(m_error), consequence);
}

bool KernelFile::open()
{
    if (m_descriptor < 0)
        m_descriptor = ::open(m_path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (m_descriptor < 0)
        m_error = errno;
    return m_descriptor >= 0 && (m_capacity > 0 || setCapacity(SmallestBuffer));
}

void KernelFile::close()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
    m_descriptor = -1;
    setCapacity(0); // after an endless text it is large
}

bool KernelFile::setCapacity(std::size_t capacity)
{
    // Not from the heap, which would keep the memory when it is freed.
    if (m_capacity > 0)
        munmap(m_buffer, m_capacity);
    m_capacity = 0;
    if (capacity == 0)
        return true;
    void *const memory =
        mmap(nullptr, capacity, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED)
        return false;
    m_buffer = static_cast<char *>(memory);
    m_capacity = capacity;
    return true;
}
