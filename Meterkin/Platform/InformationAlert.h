#pragma once

#include <QString>

/// A short message with one button, "OK". Main thread only.
class InformationAlert {
public:
    virtual ~InformationAlert() = default;

    /// Shows it over the program's other windows, which it blocks until it is answered. Each call
    /// has a message of its own, and may return before or after the answer.
    virtual void run(const QString &messageText, const QString &informativeText) = 0;
};
