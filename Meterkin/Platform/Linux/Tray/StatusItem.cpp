#include "Platform/Linux/Tray/StatusItem.h"

#include "Platform/Linux/Display/Server.h"
#include "Platform/Linux/Tray/ItemMenu.h"
#include "Platform/Log.h"

#include <utility>

namespace {

// A panel that restarts, or starts together with us, should not make the strip flash up.
constexpr std::chrono::milliseconds StripDelay{1500};

} // namespace

LinuxStatusItem::LinuxStatusItem(DisplayServer &displayServer, BusConnection &bus,
                                 DefaultsStore &store, const LinuxDesktopAppearance &appearance,
                                 NotificationCentre &notifications, QObject *parent)
    : StatusItem(parent)
    , m_displayServer(displayServer)
    , m_appearance(appearance)
    , m_x11Tray(displayServer.makeTray(m_painter))
    , m_notifier(bus, m_painter)
    , m_strip(m_painter, store)
    , m_notice(notifications)
{
    if (m_x11Tray)
        follow(*m_x11Tray);
    follow(m_notifier);
    follow(m_strip);
    connect(&m_appearance, &DesktopAppearance::changed, this, [this] {
        if (m_current != nullptr)
            m_current->lookAgain();
        updateBackground();
    });
    connect(&m_strip, &FloatingStrip::refused, this, [this] { m_notice.start(); });
    m_stripDelay.setSingleShot(true);
    m_stripDelay.setInterval(StripDelay);
    connect(&m_stripDelay, &QTimer::timeout, this, [this] {
        moveTo({&m_strip, "into a strip of its own: no panel takes it"});
    });
    choose();
}

LinuxStatusItem::~LinuxStatusItem()
{
    if (m_current != nullptr)
        m_current->detach();
}

QColor LinuxStatusItem::systemColor(SystemColor color) const
{
    return m_colors[static_cast<std::size_t>(color)];
}

void LinuxStatusItem::setTitle(const AttributedTitle &title)
{
    if (std::exchange(m_content.title, title) != title && m_current != nullptr)
        m_current->setContent(m_content);
}

void LinuxStatusItem::setAccessibilityLabel(const QString &label)
{
    m_content.accessibilityLabel = label;
}

void LinuxStatusItem::setToolTipSource(std::function<QString()> source)
{
    m_toolTipSource = std::move(source);
    m_notifier.setToolTipSource(m_toolTipSource);
}

void LinuxStatusItem::refreshToolTip()
{
    if (m_current == &m_notifier)
        m_notifier.refreshToolTip();
    else if (m_toolTip)
        m_toolTip->refresh();
}

std::optional<std::chrono::seconds> LinuxStatusItem::toolTipPeriod() const
{
    return m_current == &m_notifier ? m_notifier.toolTipPeriod() : std::nullopt;
}

QRect LinuxStatusItem::geometry() const
{
    return m_current != nullptr ? m_current->geometry() : QRect();
}

void LinuxStatusItem::follow(TrayHost &host)
{
    connect(&host, &TrayHost::availabilityChanged, this, &LinuxStatusItem::choose);
    connect(&host, &TrayHost::backgroundChanged, this, &LinuxStatusItem::updateBackground);
    connect(&host, &TrayHost::clicked, this, [this] {
        showToolTip(false); // it would cover what the click opens
        emit clicked();
    });
    connect(&host, &TrayHost::hoverChanged, this, &LinuxStatusItem::showToolTip);
    connect(&host, &TrayHost::menuChosen, this, &LinuxStatusItem::perform);
    connect(&host, &TrayHost::menuRequested, this, &LinuxStatusItem::showMenu);
}

LinuxStatusItem::Choice LinuxStatusItem::best()
{
    // Only the X11 tray can show wide coloured text on most panels; where it gives a mere square,
    // the bus protocol does the same and adds tool tip, menu and accessible text.
    const bool hasX11Tray = m_x11Tray && m_x11Tray->isAvailable();
    if (hasX11Tray && !m_x11Tray->isSqueezed())
        return {m_x11Tray.get(), "into the X11 tray, which may have room for wide text"};
    if (m_notifier.isAvailable())
        return {&m_notifier,
                hasX11Tray ? "to the StatusNotifierWatcher: the X11 tray squeezes it into a square"
                           : "to the StatusNotifierWatcher: no X11 tray takes it"};
    if (hasX11Tray)
        return {m_x11Tray.get(),
                "into the X11 tray, as a square: no StatusNotifierWatcher takes it"};
    return {nullptr, "nowhere: no panel takes it"};
}

void LinuxStatusItem::choose()
{
    const Choice choice = best();
    if (choice.host != nullptr) {
        moveTo(choice);
    } else if (m_current != &m_strip) {
        moveTo(choice);
        m_stripDelay.start();
    }
}

void LinuxStatusItem::moveTo(const Choice &choice)
{
    m_stripDelay.stop();
    if (choice.host != m_current) {
        qCDebug(logTray, "The item goes %s", choice.reason);
        if (m_toolTip)
            m_toolTip->dismiss();
        if (m_current != nullptr)
            m_current->detach();
        m_current = choice.host;
        m_notice.stop();
        if (m_current != nullptr)
            m_current->setContent(m_content);
    }
    // Also in the same host: its panel may have been replaced.
    updateBackground();
    if (m_current != nullptr)
        m_current->attach();
}

void LinuxStatusItem::updateBackground()
{
    const std::optional<QColor> background =
        m_current != nullptr ? m_current->background(m_appearance.prefersDark()) : std::nullopt;
    if (std::exchange(m_background, background) == background)
        return;
    qCDebug(logTray, "The item stands on %s",
            background ? qUtf8Printable(background->name()) : "an unknown background");
    m_colors = titleColors(background);
    emit colorsChanged();
}

void LinuxStatusItem::showMenu(QPoint anchor)
{
    showToolTip(false);
    const auto *menu = new ItemMenu(m_displayServer, anchor); // deletes itself
    connect(menu, &ItemMenu::chosen, this, &LinuxStatusItem::perform);
}

void LinuxStatusItem::perform(MenuAction action)
{
    switch (action) {
    case MenuAction::OpenDashboard:
        emit openDashboardRequested();
        break;
    case MenuAction::OpenSettings:
        emit openSettingsRequested();
        break;
    case MenuAction::Quit:
        emit quitRequested();
        break;
    }
}

void LinuxStatusItem::showToolTip(bool isInside)
{
    if (!isInside) {
        if (m_toolTip)
            m_toolTip->dismiss();
        return;
    }
    if (!m_toolTip)
        m_toolTip = std::make_unique<ItemToolTip>([this] { return m_toolTipSource(); });
    m_toolTip->schedule(geometry().center());
}
