#pragma once

#include "Platform/HotkeyRegistrar.h"
#include "Platform/Linux/Bus/Name.h"
#include "Platform/Linux/Hotkey/KeyPositions.h"

/// The hot key of a Wayland session, through the desktop's GlobalShortcuts portal. The desktop may
/// ask the user, who may choose another combination or none. Where there is no portal, or it
/// refuses, the hot key waits for another combination or for a portal that starts. Main thread
/// only.
class PortalRegistrar : public QObject, public HotkeyRegistrar {
    Q_OBJECT

public:
    /// From a virtual key code to what the key gives without modifiers.
    using FindKeysym = std::function<std::uint32_t(std::uint32_t)>;

    explicit PortalRegistrar(FindKeysym findKeysym = ansiKeysym, QObject *parent = nullptr);

    void bind(const HotkeyCombination &combination, const HotkeyIdentifier &identifier,
              std::function<void()> pressed) override;
    void unbind() override;

private slots:
    void takeSessionResponse(const QDBusMessage &response);
    void takeBindResponse(const QDBusMessage &response);
    void handleActivation(const QDBusMessage &activation);
    void handleClosedSession(const QDBusMessage &closing);

private:
    /// How far the talk with the present portal has come.
    enum class Step {
        Idle, ///< no portal, or none known yet, or it refused, or it has ended the session
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
    void giveUp(HotkeyObstacle obstacle);
    QString trigger() const;
    void call(const QDBusMessage &call, HotkeyObstacle onError);
    bool isAnswer(const QDBusMessage &response, Step step) const;
    QString handle(const QString &token) const;

    FindKeysym m_findKeysym;
    std::function<void()> m_pressed;
    HotkeyCombination m_combination;
    QTimer m_start;
    QTimer m_noPortal; ///< until a portal that has not answered counts as missing
    std::unique_ptr<BusConnection> m_bus; ///< while a hot key is registered
    std::unique_ptr<BusName> m_service; ///< on that bus
    std::unique_ptr<QObject> m_talk; ///< with one portal; replies of an earlier one find nobody
    QString m_portal; ///< the unique bus name of the last one that answered
    Step m_step = Step::Idle;
};
