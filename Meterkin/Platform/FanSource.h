#pragma once

#include <QList>
#include <QString>

#include <cstdint>
#include <optional>

/// One fan that could be read; speeds in revolutions per minute.
struct FanReading {
    std::int64_t index = 0; ///< its number among the machine's fans, from 0
    double rpm = 0.0;
    std::optional<double> min; ///< absent when the fan has no such value, or it cannot be read
    std::optional<double> max;
    QString name = {}; ///< as the machine's maker calls it; empty when it has no name

    bool operator==(const FanReading &) const = default;
};

/// The machine's fans at one moment.
struct FanSample {
    qint64 count = 0; ///< all fans, also those that cannot be read; 0 when it is unknown
    QList<FanReading> fans; ///< those that could be read, in index order

    bool operator==(const FanSample &) const = default;
};

/// The machine's fans. Called from one thread at a time, off the main thread.
class FanSource {
public:
    virtual ~FanSource() = default;

    /// Replaces `sample`; reuses its storage. Takes as long as the sensors do; a broken one may
    /// hang forever.
    virtual void read(FanSample &sample) = 0;
};
