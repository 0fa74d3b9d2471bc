#pragma once

#include <QtGlobal>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// A small file of the kernel that is read over and over: kept open, into a buffer that is kept.
/// One thread at a time.
class KernelFile {
public:
    explicit KernelFile(std::string path);
    ~KernelFile();
    Q_DISABLE_COPY_MOVE(KernelFile)

    /// The whole text now, valid until the next read; absent when it cannot be read or is empty. A
    /// file that failed is opened anew the next time: it may have been replaced. The buffer follows
    /// the length of the text, in both directions.
    std::optional<std::string_view> read();

private:
    bool open();
    void close();
    /// In bytes, 0 for no buffer. False when there is no memory for it.
    bool setCapacity(std::size_t capacity);

    std::string m_path;
    int m_descriptor = -1;
    char *m_buffer = nullptr;
    std::size_t m_capacity = 0;
    std::size_t m_length = 0; ///< of the last text
};
