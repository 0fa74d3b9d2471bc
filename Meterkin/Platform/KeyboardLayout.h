#pragma once

#include <QProperty>
#include <QString>

struct HotkeyCombination;

/// How users of this system write key combinations. Main thread only.
class KeyboardLayout {
public:
    virtual ~KeyboardLayout() = default;

    /// Such as "Ctrl+Alt+K", named by the present layout; without modifiers the key's name alone. A
    /// binding that asks follows the layout.
    QString text(const HotkeyCombination &combination)
    {
        static_cast<void>(m_changes.value());
        return write(combination);
    }

protected:
    /// Texts may be others now.
    void handleChange() { m_changes = m_changes + 1; }

private:
    virtual QString write(const HotkeyCombination &combination) = 0;

    QProperty<int> m_changes;
};
