#pragma once

#include "Platform/Linux/Hotkey/KeyPositions.h"

#include <QObject>

#include <optional>

class QKeyEvent;

/// Watches the keys of the application's own windows. Main thread only.
class LinuxKeyDownMonitor : public QObject, public KeyDownMonitor {
    Q_OBJECT

public:
    /// From a hardware code to a virtual key code.
    using FindKey = std::function<std::uint32_t(std::uint32_t)>;

    explicit LinuxKeyDownMonitor(FindKey findKey = virtualKeyCode, QObject *parent = nullptr);

    void install(std::function<bool(const KeyDown &)> handler) override;
    void remove() override;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    enum class Verdict { Passed, Swallowed };
    /// The key that went down last.
    struct Judged {
        quint32 scanCode;
        Verdict verdict;
        bool isPressToCome; ///< Qt has sent only the ShortcutOverride before it
    };

    Verdict judgePress(const QKeyEvent &key);
    Verdict judgeRelease(const QKeyEvent &key);
    Verdict ask(const QKeyEvent &key) const;
    void watch();

    FindKey m_findKey;
    std::function<bool(const KeyDown &)> m_handler;
    std::optional<Judged> m_judged;
    bool m_isWatching = false;
};
