#pragma once

#include "Platform/NotificationCentre.h"
#include "Platform/macOS/MainBundle.h"

#include <memory>
#include <optional>

/// The system's user notifications, which are shown while the program is active, too.
class UserNotificationCentre : public NotificationCentre {
    Q_OBJECT

public:
    /// Outside a bundle there is no centre, and asking the system for one ends the program: nobody
    /// is asked then and nothing is posted.
    explicit UserNotificationCentre(const std::optional<QString> &identifier = bundleIdentifier(),
                                    QObject *parent = nullptr);
    ~UserNotificationCentre() override;

    void queryAuthorization(std::function<void(NotificationAuthorization)> done) override;
    void requestAuthorization(std::function<void(AuthorizationAnswer)> done) override;
    void post(const NotificationRecord &record) override;

private:
    struct Objects;
    std::unique_ptr<Objects> m_objects; ///< null outside a bundle
};
