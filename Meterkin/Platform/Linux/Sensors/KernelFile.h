#pragma once

#include <QtGlobal>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// A small file of the kernel that is read again and again; the file stays open and the buffer is
/// reused. One thread at a time.
class KernelFile {
public:
    explicit KernelFile(std::string path);
    ~KernelFile();
    Q_DISABLE_COPY_MOVE(KernelFile)

    /// The whole text now, valid until the next read; absent when it cannot be read or is empty.
    /// After a failure the file is opened again, for it may have been replaced. The buffer grows
    /// and shrinks with the text.
    std::optional<std::string_view> read();

    /// Logs, once, that the last text was missing or made no sense, and the consequence of that.
    void warnOnce(const char *consequence);

private:
    bool open();
    void close();
    /// In bytes, 0 for no buffer. False when memory is short.
    bool setCapacity(std::size_t capacity);

    std::string m_path;
    int m_descriptor = -1;
    char *m_buffer = nullptr;
    std::size_t m_capacity = 0;
    std::size_t m_length = 0; ///< of the last text
    int m_error = 0; ///< errno of the last read; 0 when it got a text, if only an empty one
    bool m_hasWarned = false;
};
