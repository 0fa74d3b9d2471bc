#pragma once

#include "Platform/NotificationCentre.h"
#include "Platform/macOS/MainBundle.h"

#include <memory>
#include <optional>

/// User notifications, shown while the program is active, too.
class MacNotificationCentre : public NotificationCentre {
    Q_OBJECT

public:
    /// Without a bundle identifier macOS has no notification centre, and asking for one aborts the
    /// program: every request then fails and nothing is posted.
    explicit MacNotificationCentre(const std::optional<QString> &identifier = bundleIdentifier(),
                                   QObject *parent = nullptr);
    ~MacNotificationCentre() override;

    void queryAuthorization(std::function<void(NotificationAuthorization)> done) override;
    void requestAuthorization(std::function<void(AuthorizationAnswer)> done) override;
    void post(const NotificationRecord &record) override;

private:
    struct Objects;
    std::unique_ptr<Objects> m_objects; ///< null without a bundle
};
