#pragma once

#include "Platform/DesktopAppearance.h"
#include "Platform/Linux/SessionBus.h"

#include <QDBusServiceWatcher>
#include <QDBusVariant>

#include <memory>

/// The desktop's colour scheme and text size as its portal tells them; light and unscaled while
/// there is no portal, and as last told when it goes away. Main thread only.
class PortalAppearance : public DesktopAppearance {
    Q_OBJECT

public:
    /// Whether the window system's own scale says how large texts are to be, as it does on X11, or
    /// the portal has to.
    enum class TextScale { FromWindowSystem, FromPortal };

    /// The bus outlives it.
    PortalAppearance(SessionBus &bus, TextScale source, QObject *parent = nullptr);

    bool isDark() const override { return m_isDark; }
    double textScale() const override { return m_textScale; }

private slots:
    void take(const QString &group, const QString &key, const QDBusVariant &value);

private:
    void follow();
    void ask();
    void ask(const QString &group, const QString &key);

    SessionBus &m_bus;
    TextScale m_source;
    std::unique_ptr<QDBusServiceWatcher> m_portal;
    bool m_isDark = false;
    double m_textScale = 1.0;
};
