#pragma once

#include "Platform/Platform.h"
#include "Platform/WindowSystem.h"
#include "Support/ScriptedServices.h"
#include "Support/ScriptedStore.h"
#include "Support/ScriptedVitals.h"
#include "Windows/ApplicationWindows.h"

#include <QPointer>
#include <QQuickWindow>
#include <QStringList>

#include <utility>

/// A status item that remembers what it is told.
struct ScriptedStatusItem : StatusItem {
    bool hasButton() const override { return button; }
    QColor systemColor(SystemColor color) const override
    {
        return onlyColor.isValid() ? onlyColor : colors[static_cast<int>(color)];
    }
    void setTitle(const AttributedTitle &title) override { titles.append(title); }
    void setAccessibilityLabel(const QString &label) override { accessibilityLabel = label; }
    void setToolTipSource(std::function<QString()> source) override { toolTip = std::move(source); }
    void refreshToolTip() override
    {
        if (isToolTipShown)
            toolTip();
    }
    std::optional<std::chrono::seconds> toolTipPeriod() const override { return {}; }
    QRect geometry() const override { return QRect(700, 0, 60, 24); }

    static constexpr QColor colors[] = {QColor(0, 200, 0), QColor(200, 200, 0), QColor(200, 0, 0)};
    QColor onlyColor; ///< in place of all others
    bool button = true;
    QList<AttributedTitle> titles;
    QString accessibilityLabel;
    std::function<QString()> toolTip;
    bool isToolTipShown = false;
};

/// A system of scripted back ends. The onboarding was shown, and only the first sample comes by
/// itself.
class ScriptedPlatform : public Platform {
public:
    ScriptedPlatform()
    {
        store.setBoolean(QStringLiteral("onboardingShown"), true);
        store.setNumber(QStringLiteral("updateInterval"), 86400.0);
    }

    std::shared_ptr<Vitals> vitals = std::make_shared<Vitals>();
    ScriptedStore store;
    ScriptedNotificationCentre centre;
    ScriptedHotkeyRegistrar registrar;
    ScriptedLoginItem login;
    QPointer<ScriptedStatusItem> item;
    QPointer<ApplicationWindows> windows; ///< null until the first one is wanted

    MetricSources makeMetricSources() override { return makeSources(vitals); }
    std::unique_ptr<StatusItem> makeStatusItem() override
    {
        auto made = std::make_unique<ScriptedStatusItem>();
        item = made.get();
        return made;
    }
    DefaultsStore &defaultsStore() override { return store; }
    QString computerWord() const override { return QStringLiteral("abacus"); }
    NotificationCentre &notificationCentre() override { return centre; }
    HotkeyRegistrar &hotkeyRegistrar() override { return registrar; }
    LoginItem &loginItem() override { return login; }
    UpdateFramework &updateFramework() override { return m_updates; }
    KeyDownMonitor &keyDownMonitor() override { return m_monitor; }
    DesktopAppearance &desktopAppearance() override { return appearance; }
    std::unique_ptr<Windows> makeWindows(SettingsViewModel &settings, UpdaterController &updater,
                                         DashboardViewModel &dashboard) override
    {
        auto made = std::make_unique<ApplicationWindows>(*this, std::make_unique<System>(*this),
                                                         settings, updater, dashboard);
        windows = made.get();
        return made;
    }
    void giveMemoryBack() override { }
    std::shared_ptr<DiskImages> diskImages() override { return nullptr; }
    QVariantMap informationDictionary() const override { return {}; }
    QString bundlePath() const override { return QStringLiteral("/nowhere/Meterkin"); }

    struct Popover : PopoverContainer {
        QStringList done;
        MakeContent make;
        bool shown = false;
        void setContent(MakeContent makeContent) override { make = std::move(makeContent); }
        bool isShown() const override { return shown; }
        bool swallowsClick(const QRect &) override { return false; }
        void show(const QRect &place) override
        {
            shown = true;
            done << QStringLiteral("show at %1").arg(place.x());
        }
        void close() override
        {
            shown = false;
            done << QStringLiteral("close");
        }
    } shownPopover;

    struct Style : WindowStyle {
        QStringList presented; ///< titles
        void makeTitled(QQuickWindow &) override { }
        TitleBar makeOnboarding(QQuickWindow &) override { return TitleBar::System; }
        void present(QQuickWindow &window) override { presentUnasked(window); }
        void presentUnasked(QQuickWindow &window) override
        {
            window.show();
            presented << window.title();
        }
    } style;

    struct Appearance : DesktopAppearance {
        bool isDark() const override { return dark; }
        double textScale() const override { return scale; }
        bool dark = false;
        double scale = 1.0;
    } appearance;

private:
    struct System : WindowSystem {
        explicit System(ScriptedPlatform &platform)
            : m_platform(platform)
        {
        }
        PopoverContainer &popover() override { return m_platform.shownPopover; }
        WindowStyle &windowStyle() override { return m_platform.style; }
        InformationAlert &informationAlert() override { return m_platform.m_alert; }

    private:
        ScriptedPlatform &m_platform;
    };

    ScriptedUpdateFramework m_updates;
    ScriptedKeyDownMonitor m_monitor;
    ScriptedInformationAlert m_alert;
};
