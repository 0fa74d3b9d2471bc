#pragma once

#include "Sampling/MetricSample.h"

#include <chrono>
#include <cstddef>
#include <memory>
#include <span>
#include <utility>
#include <vector>

/// A sample and when it was taken.
struct Reading {
    std::chrono::system_clock::time_point time;
    MetricSample sample;
};

/// Readings in the order in which they were taken. Its storage, and that of the samples, is used
/// again and again.
class ReadingBatch {
public:
    std::span<std::unique_ptr<Reading>> readings() { return std::span(m_storage).first(m_size); }
    std::size_t size() const { return m_size; }
    void clear() { m_size = 0; }

    /// Takes the reading over, and gives the storage of an old one for it.
    void append(std::unique_ptr<Reading> &reading)
    {
        if (m_size == m_storage.size())
            m_storage.push_back(std::make_unique<Reading>());
        std::swap(m_storage[m_size++], reading);
    }

private:
    std::vector<std::unique_ptr<Reading>> m_storage;
    std::size_t m_size = 0;
};
