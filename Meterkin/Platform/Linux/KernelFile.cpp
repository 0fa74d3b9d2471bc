#include "Platform/Linux/KernelFile.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr std::size_t SmallestBuffer = 4096;
constexpr std::size_t LargestBuffer = std::size_t{16} << 20; // far beyond any true file

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
        m_capacity = 0; // a text that was large once
    if (!open())
        return std::nullopt;
    for (;;) {
        const ssize_t count = readFromStart(m_descriptor, m_buffer.get(), m_capacity);
        // A full buffer may hide a rest; what follows in a second read could be of another moment.
        if (count == static_cast<ssize_t>(m_capacity) && m_capacity < LargestBuffer) {
            grow();
            continue;
        }
        if (count > 0 && count < static_cast<ssize_t>(m_capacity)) {
            m_length = static_cast<std::size_t>(count);
            return std::string_view(m_buffer.get(), m_length);
        }
        close();
        return std::nullopt;
    }
}

bool KernelFile::open()
{
    if (m_descriptor < 0)
        m_descriptor = ::open(m_path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (m_descriptor >= 0 && m_capacity == 0)
        grow();
    return m_descriptor >= 0;
}

void KernelFile::close()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
    m_descriptor = -1;
    m_buffer.reset(); // of a text without end it is large
    m_capacity = 0;
}

void KernelFile::grow()
{
    m_capacity = std::max(SmallestBuffer, 2 * m_capacity);
    m_buffer = std::make_unique_for_overwrite<char[]>(m_capacity);
}
