#pragma once

#include "Platform/Platform.h"
#include "Support/ScriptedServices.h"
#include "Support/ScriptedStatusItem.h"
#include "Support/ScriptedStore.h"
#include "Support/ScriptedVitals.h"

#include <QPointer>
#include <QQuickWindow>
#include <QStringList>

#include <utility>

/// A system of scripted back ends that notes in which order the program turns to them.
class ScriptedPlatform : public Platform {
public:
    QStringList calls;
    std::shared_ptr<Vitals> vitals = std::make_shared<Vitals>();
    ScriptedStore store;
    ScriptedNotificationCentre centre;
    ScriptedHotkeyRegistrar registrar;
    ScriptedLoginItem login;
    QPointer<ScriptedStatusItem> item;

    std::unique_ptr<FanSource> makeFanSource() override
    {
        calls << QStringLiteral("fans");
        return std::make_unique<VitalFans>(vitals);
    }
    std::unique_ptr<PageCounters> makePageCounters() override
    {
        calls << QStringLiteral("pages");
        return std::make_unique<VitalPages>(vitals);
    }
    std::unique_ptr<ProcessorTicks> makeProcessorTicks() override
    {
        calls << QStringLiteral("ticks");
        return std::make_unique<VitalTicks>(vitals);
    }
    std::unique_ptr<StatusItem> makeStatusItem() override
    {
        calls << QStringLiteral("status item");
        auto made = std::make_unique<ScriptedStatusItem>();
        item = made.get();
        return made;
    }
    DefaultsStore &defaultsStore() override { return store; }
    QString computerWord() const override { return QStringLiteral("abacus"); }
    NotificationCentre &notificationCentre() override { return noted("alerts", centre); }
    HotkeyRegistrar &hotkeyRegistrar() override { return noted("hot key", registrar); }
    LoginItem &loginItem() override { return noted("login item", login); }
    UpdateFramework &updateFramework() override { return noted("updates", m_updates); }
    PopoverContainer &popover() override { return noted("popover", shownPopover); }
    WindowStyle &windowStyle() override { return style; }
    KeyDownMonitor &keyDownMonitor() override { return m_monitor; }
    DesktopAppearance &desktopAppearance() override { return appearance; }
    InformationAlert &informationAlert() override { return m_alert; }
    void giveMemoryBack() override { }
    std::shared_ptr<DiskImages> diskImages() override
    {
        calls << QStringLiteral("disk images");
        return nullptr;
    }
    QVariantMap informationDictionary() const override { return dictionary; }
    QString bundlePath() const override { return QStringLiteral("/nowhere/Meterkin"); }
    QVariantMap dictionary{{QStringLiteral("CFBundleShortVersionString"), QStringLiteral("1.2")}};

    struct Popover : PopoverContainer {
        QStringList done;
        MakeContent make;
        void setContent(MakeContent makeContent) override { make = std::move(makeContent); }
        bool isShown() const override { return shown; }
        bool swallowsClick(const QRect &) override { return swallows; }
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
        bool shown = false;
        bool swallows = false;
    } shownPopover;

    struct Style : WindowStyle {
        QStringList done;
        void makeTitled(QQuickWindow &) override { done << QStringLiteral("titled"); }
        TitleBar makeOnboarding(QQuickWindow &) override
        {
            done << QStringLiteral("onboarding");
            return TitleBar::System;
        }
        void present(QQuickWindow &window) override { presentUnasked(window); }
        void presentUnasked(QQuickWindow &window) override
        {
            window.show();
            done << window.title();
        }
    } style;

    struct Appearance : DesktopAppearance {
        bool isDark() const override { return dark; }
        double textScale() const override { return scale; }
        bool dark = false;
        double scale = 1.0;
    } appearance;

private:
    template <typename Service> Service &noted(const char *name, Service &service)
    {
        calls << QString::fromLatin1(name);
        return service;
    }

    ScriptedUpdateFramework m_updates;
    ScriptedKeyDownMonitor m_monitor;
    ScriptedInformationAlert m_alert;
};
