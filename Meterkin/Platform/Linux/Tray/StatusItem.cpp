#include "Platform/Linux/Tray/StatusItem.h"

#include "Platform/Linux/Tray/ItemMenu.h"

#include <utility>

namespace {

// A panel that restarts, or starts together with us, should not make the strip flash up.
constexpr int StripDelayMilliseconds = 1500;

} // namespace

LinuxStatusItem::LinuxStatusItem(X11Connection &x11, BusConnection &bus, DefaultsStore &store,
                                 QObject *parent)
    : StatusItem(parent)
    , m_xembed(x11, m_painter)
    , m_notifier(bus, m_painter)
    , m_strip(m_painter, store)
{
    follow(m_xembed);
    follow(m_notifier);
    follow(m_strip);
    connect(&m_xembed, &XembedIcon::squeezedChanged, this, &LinuxStatusItem::choose);
    connect(&m_xembed, &XembedIcon::hoverChanged, this, &LinuxStatusItem::showToolTip);
    connect(&m_strip, &FloatingStrip::hoverChanged, this, &LinuxStatusItem::showToolTip);
    m_stripDelay.setSingleShot(true);
    m_stripDelay.setInterval(StripDelayMilliseconds);
    connect(&m_stripDelay, &QTimer::timeout, this, [this] { moveTo(&m_strip); });
    m_publish.setSingleShot(true);
    connect(&m_publish, &QTimer::timeout, this, &LinuxStatusItem::publish);
    choose();
}

LinuxStatusItem::~LinuxStatusItem()
{
    if (m_current != nullptr)
        m_current->detach();
}

void LinuxStatusItem::setTitle(const AttributedTitle &title)
{
    if (std::exchange(m_content.title, title) != title)
        m_publish.start(0);
}

void LinuxStatusItem::setAccessibilityLabel(const QString &label)
{
    if (std::exchange(m_content.accessibilityLabel, label) != label)
        m_publish.start(0);
}

void LinuxStatusItem::setToolTip(const QString &text)
{
    if (std::exchange(m_content.toolTip, text) != text)
        m_publish.start(0);
    if (m_toolTip)
        m_toolTip->setText(text);
}

QRect LinuxStatusItem::geometry() const
{
    return m_current != nullptr ? m_current->geometry() : QRect();
}

void LinuxStatusItem::follow(TrayHost &host)
{
    connect(&host, &TrayHost::availabilityChanged, this, &LinuxStatusItem::choose);
    connect(&host, &TrayHost::clicked, this, [this] {
        showToolTip(false); // nor over what the click opens
        emit clicked();
    });
    connect(&host, &TrayHost::menuChosen, this, &LinuxStatusItem::perform);
    connect(&host, &TrayHost::menuRequested, this, &LinuxStatusItem::showMenu);
}

TrayHost *LinuxStatusItem::best()
{
    // Only the X11 tray can show wide coloured text on most panels; where it gives a mere square,
    // the bus protocol does the same and adds tool tip, menu and accessible text.
    if (m_xembed.isAvailable() && !m_xembed.isSqueezed())
        return &m_xembed;
    if (m_notifier.isAvailable())
        return &m_notifier;
    if (m_xembed.isAvailable())
        return &m_xembed;
    return nullptr;
}

void LinuxStatusItem::choose()
{
    TrayHost *host = best();
    if (host != nullptr) {
        moveTo(host);
    } else if (m_current != &m_strip) {
        moveTo(nullptr);
        m_stripDelay.start();
    }
}

void LinuxStatusItem::moveTo(TrayHost *host)
{
    m_stripDelay.stop();
    if (host != m_current) {
        if (m_toolTip)
            m_toolTip->dismiss();
        if (m_current != nullptr)
            m_current->detach();
        m_current = host;
        if (m_current != nullptr)
            m_current->setContent(m_content);
    }
    // Also for the same host: the panel behind it may be another one now.
    if (m_current != nullptr)
        m_current->attach();
}

void LinuxStatusItem::publish()
{
    if (m_current != nullptr)
        m_current->setContent(m_content);
}

void LinuxStatusItem::showMenu(QPoint anchor)
{
    showToolTip(false);
    const auto *menu = new ItemMenu(anchor); // deletes itself
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

void LinuxStatusItem::showToolTip(bool inside)
{
    if (!inside) {
        if (m_toolTip)
            m_toolTip->dismiss();
        return;
    }
    if (!m_toolTip)
        m_toolTip = std::make_unique<ItemToolTip>();
    m_toolTip->setText(m_content.toolTip);
    m_toolTip->schedule(geometry().center());
}
