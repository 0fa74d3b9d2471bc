#pragma once

#include "Platform/HotkeyRegistrar.h"
#include "Platform/InformationAlert.h"
#include "Platform/KeyDownMonitor.h"
#include "Platform/LoginItem.h"
#include "Platform/NotificationCentre.h"
#include "Platform/UpdateFramework.h"

#include <QStringList>

#include <utility>
#include <vector>

// System services that do as the test says and remember what they were asked.

/// Holds every question back until the test answers it.
class ScriptedNotificationCentre : public NotificationCentre {
public:
    std::vector<std::function<void(NotificationAuthorization)>> queries;
    std::vector<std::function<void(AuthorizationAnswer)>> requests;
    std::vector<NotificationRecord> posts;
    int requestCount = 0; ///< answered or not

    void queryAuthorization(std::function<void(NotificationAuthorization)> done) override
    {
        queries.push_back(std::move(done));
    }
    void requestAuthorization(std::function<void(AuthorizationAnswer)> done) override
    {
        requests.push_back(std::move(done));
        ++requestCount;
    }
    void post(const NotificationRecord &record) override { posts.push_back(record); }

    void answerQueries(NotificationAuthorization authorization)
    {
        for (const auto &done : std::exchange(queries, {}))
            done(authorization);
    }
    void answerRequests(AuthorizationAnswer answer)
    {
        for (const auto &done : std::exchange(requests, {}))
            done(answer);
    }
};

class ScriptedLoginItem : public LoginItem {
public:
    bool enabled = false;

    bool isEnabled() const override { return enabled; }
    bool registerItem(LoginItemWish) override { return enabled = true; }
    bool unregisterItem() override
    {
        enabled = false;
        return true;
    }
};

class ScriptedHotkeyRegistrar : public HotkeyRegistrar {
public:
    QStringList calls;

    using HotkeyRegistrar::setObstacle;

    void bind(const HotkeyCombination &combination, std::function<void()> pressed) override
    {
        calls << QString::asprintf("bind %u+0x%x", combination.keyCode, combination.modifiers);
        m_pressed = std::move(pressed);
    }
    void unbind() override
    {
        calls << QStringLiteral("unbind");
        m_pressed = nullptr;
    }

    void press() const
    {
        if (const auto pressed = m_pressed)
            pressed();
    }

private:
    std::function<void()> m_pressed;
};

class ScriptedKeyDownMonitor : public KeyDownMonitor {
public:
    std::function<bool(const KeyDown &)> handler;

    void install(std::function<bool(const KeyDown &)> added) override { handler = added; }
    void remove() override { handler = nullptr; }
};

class ScriptedUpdateFramework : public UpdateFramework {
public:
    QStringList calls;
    bool isItsOwnFeed = false;

    void start() override { calls << QStringLiteral("start"); }
    void setAutomaticallyDownloadsUpdates(bool automatically) override
    {
        calls << (automatically ? QStringLiteral("automatic") : QStringLiteral("manual"));
    }
    void observe() override { calls << QStringLiteral("observe"); }
    bool needsFeed() const override { return !isItsOwnFeed; }
    void checkForUpdates() override { calls << QStringLiteral("check"); }
};

class ScriptedInformationAlert : public InformationAlert {
public:
    QStringList texts;

    void run(const QString &messageText, const QString &informativeText) override
    {
        texts << messageText + u'|' + informativeText;
    }
};
