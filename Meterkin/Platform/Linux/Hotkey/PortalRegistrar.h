#pragma once

#include "Platform/HotkeyRegistrar.h"
#include "Platform/Linux/Bus/Name.h"
#include "Platform/Linux/Hotkey/KeyPositions.h"

/// The hot key of a Wayland session, bound by the desktop's portal:
/// org.freedesktop.portal.GlobalShortcuts of xdg-desktop-portal. The desktop may ask the user, who
/// may choose another combination or none. After a refusal nothing is bound until another
/// combination is wanted or a portal starts. Main thread only.
class PortalRegistrar : public QObject, public HotkeyRegistrar {
    Q_OBJECT

public:
    /// From a virtual key code to the key's symbol without modifiers.
    using FindKeysym = std::function<std::uint32_t(std::uint32_t)>;

    explicit PortalRegistrar(FindKeysym findKeysym = ansiKeysym, QObject *parent = nullptr);

    void bind(const HotkeyCombination &combination, std::function<void()> pressed) override;
    void unbind() override;

private slots:
    void takeSessionResponse(const QDBusMessage &response);
    void takeBindResponse(const QDBusMessage &response);
    void handleActivation(const QDBusMessage &activation);
    void handleClosedSession(const QDBusMessage &closing);

private:
    /// The state of the session with the portal.
    enum class Step {
        Idle, ///< no portal, or it is not known yet, or it has refused or ended the session
        CreatingSession,
        Binding,
        Bound,
    };

    void openBus();
    void closeBus();
    void connectSignals();
    void handleOwner(const std::optional<QString> &previous);
    void forgetPortal();
    void introduce();
    void createSession();
    void bindShortcut();
    void takeBound(const QVariant &keys);
    QVariant shortcuts() const;
    void giveUp(HotkeyObstacle obstacle, const char *reason);
    QString trigger() const;
    void call(const QDBusMessage &call, HotkeyObstacle onError);
    bool isFromPortal(const QDBusMessage &response, Step step) const;
    QString handle(const QString &token) const;

    FindKeysym m_findKeysym;
    std::function<void()> m_pressed;
    HotkeyCombination m_combination;
    QTimer m_start;
    QTimer m_noPortal; ///< until a portal that does not answer counts as missing
    std::unique_ptr<BusConnection> m_bus; ///< while a hot key is wanted
    std::unique_ptr<BusName> m_service; ///< on that bus
    std::unique_ptr<QObject> m_receiver; ///< of the present portal's replies
    QString m_portal; ///< the unique bus name of the last one that answered
    Step m_step = Step::Idle;
};
