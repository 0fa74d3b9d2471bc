#pragma once

#include <QObject>
#include <QString>

#include <functional>

/// What the user has decided about our notifications, so far.
enum class NotificationAuthorization {
    NotDetermined,
    Denied,
    Authorized,
    Provisional, ///< delivered quietly, on trial
};

/// How a request for authorisation ended.
enum class AuthorizationAnswer {
    Granted,
    Refused,
    Failed, ///< there is no answer: an error, or nobody to ask
};

/// One notification, shown at once with the default sound.
struct NotificationRecord {
    QString identifier; ///< a record replaces the one of the same identifier that is still listed
    QString title;
    QString body; ///< plain text

    bool operator==(const NotificationRecord &) const = default;
};

/// The desktop's notifications. Main thread only. Every callback runs on the main thread, once at
/// most and never before the call that took it has returned; its owner may be gone by then.
class NotificationCentre : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Tells the present decision without asking the user. When it cannot be told the answer is
    /// NotDetermined.
    virtual void queryAuthorization(std::function<void(NotificationAuthorization)> done) = 0;

    /// Asks the user, who is bothered only once, to allow alerts with sound. May be called again
    /// while an earlier request is unanswered.
    virtual void requestAuthorization(std::function<void(AuthorizationAnswer)> done) = 0;

    /// Returns at once; a failure is silent.
    virtual void post(const NotificationRecord &record) = 0;

signals:
    /// The user chose the notification that was posted under that identifier.
    void clicked(const QString &identifier);
};
