#include "Platform/Linux/Tray/Notifier/Item.h"

#include "Platform/Linux/Tray/Notifier/PlasmaPanel.h"
#include "Platform/Linux/Tray/TitleColor.h"
#include "Platform/Linux/X11/ScreenCoordinates.h"
#include "Platform/Log.h"

#include <QCoreApplication>
#include <QCursor>

#include <utility>

namespace {

using namespace std::chrono_literals;

constexpr int MaximumFailures = 3;
constexpr auto FailureRetry = 1s;
// The panel that refused may only have been slow. Each retry takes the item out of its present
// host.
constexpr auto FirstRefusalRetry = 10s;
constexpr auto LongestRefusalRetry = 10min;
constexpr auto RegistrationTimeout = 3s;
constexpr int ClickedSize = 2; // logical pixels around the click

constexpr uint DoNotQueue = 4; // flag of RequestName
constexpr uint PrimaryOwner = 1; // reply of RequestName

const QString itemPath = QStringLiteral("/StatusNotifierItem");

QString newItemName()
{
    static int count = 0;
    return QStringLiteral("org.kde.StatusNotifierItem-%1-%2")
        .arg(QCoreApplication::applicationPid())
        .arg(++count);
}

} // namespace

NotifierItem::NotifierItem(BusConnection &bus, TitlePainter &painter, QObject *parent)
    : TrayHost(parent)
    , m_bus(bus)
    , m_painter(painter)
    , m_watcher(bus)
    , m_refusalRetry(FirstRefusalRetry, LongestRefusalRetry)
{
    connect(&m_watcher, &NotifierWatcher::hostChanged, this, &NotifierItem::handleWatcher);
    connect(&bus, &BusConnection::disconnected, this, [this] {
        withdraw();
        m_refusedBy.clear(); // a new bus may give the same name to somebody else
        m_warnedAbout.clear();
    });
    m_retry.setSingleShot(true);
    m_retry.setInterval(FailureRetry);
    connect(&m_retry, &QTimer::timeout, this, &NotifierItem::present);
    connect(&m_refusalRetry, &QTimer::timeout, this, [this] {
        m_refusedBy.clear();
        updateAvailability();
    });
}

NotifierItem::~NotifierItem()
{
    withdraw();
}

bool NotifierItem::isAvailable() const
{
    return m_watcher.hasHost() && m_watcher.owner() != m_refusedBy;
}

void NotifierItem::attach()
{
    if (!isAvailable())
        return;
    m_attached = true;
    if (m_presentedTo != m_watcher.owner()) {
        m_failures = 0;
        present();
    }
}

void NotifierItem::detach()
{
    m_attached = false;
    m_clickedAt.reset();
    withdraw();
}

void NotifierItem::setContent(const TrayContent &content)
{
    m_content = content;
    if (m_interface)
        m_interface->setContent(content);
}

void NotifierItem::refreshToolTip()
{
    if (m_interface)
        m_interface->refreshToolTip();
}

std::optional<std::chrono::seconds> NotifierItem::toolTipPeriod() const
{
    return m_interface ? m_interface->toolTipPeriod() : std::nullopt;
}

QRect NotifierItem::geometry() const
{
    // Panels that do not know the place give the origin.
    const std::optional<QPoint> position =
        m_clickedAt && !m_clickedAt->isNull() ? logicalPosition(*m_clickedAt) : std::nullopt;
    if (!position)
        return QRect();
    return QRect(*position - QPoint(ClickedSize / 2, ClickedSize / 2),
                 QSize(ClickedSize, ClickedSize));
}

std::optional<QColor> NotifierItem::background(std::optional<bool> isDesktopDark) const
{
    std::optional<bool> isDark;
    switch (m_watcher.host().background) {
    case NotifierBackground::Black:
        return Qt::black;
    case NotifierBackground::AsDesktop:
        isDark = isDesktopDark;
        break;
    case NotifierBackground::AsPlasmaTheme:
        isDark = isPlasmaPanelDark(isDesktopDark);
        break;
    case NotifierBackground::Unknown:
        break;
    }
    return isDark ? std::optional(typicalBackground(*isDark)) : std::nullopt;
}

void NotifierItem::handleWatcher()
{
    if (!m_watcher.hasHost())
        m_retry.stop();
    else if (m_attached)
        attach();
    updateAvailability();
}

void NotifierItem::updateAvailability()
{
    if (std::exchange(m_wasAvailable, isAvailable()) != isAvailable())
        emit availabilityChanged();
}

void NotifierItem::present()
{
    withdraw();
    if (!m_watcher.hasHost())
        return;
    QDBusConnection connection = *m_bus.connection();
    m_name = newItemName();
    m_presentedTo = m_watcher.owner();
    m_interface = std::make_unique<NotifierInterface>(m_painter, m_watcher.host().kind, m_content,
                                                      [this] { return m_toolTipSource(); });
    m_menu = std::make_unique<NotifierMenu>();
    // Queued: the panel gets its reply before a window is built, and the objects may be deleted.
    connect(
        m_interface.get(), &NotifierInterface::activated, this,
        [this](QPoint position) {
            m_clickedAt = position;
            emit clicked();
        },
        Qt::QueuedConnection);
    connect(
        m_interface.get(), &NotifierInterface::contextMenuRequested, this,
        [this](QPoint position) {
            emit menuRequested(logicalPosition(position).value_or(QCursor::pos()));
        },
        Qt::QueuedConnection);
    connect(m_menu.get(), &NotifierMenu::chosen, this, &TrayHost::menuChosen, Qt::QueuedConnection);
    connection.registerObject(itemPath, m_interface.get(),
                              QDBusConnection::ExportAllProperties | QDBusConnection::ExportAllSlots
                                  | QDBusConnection::ExportScriptableSignals);
    connection.registerObject(NotifierInterface::MenuPath, m_menu.get(),
                              QDBusConnection::ExportAllProperties
                                  | QDBusConnection::ExportAllSlots);

    QDBusMessage request = BusConnection::busCall(QStringLiteral("RequestName"));
    request << m_name << DoNotQueue;
    m_bus.call<uint>(request, m_interface.get(), [this](const BusReply<uint> &reply) {
        if (reply.value() == PrimaryOwner)
            registerWithPanel();
        else
            handleFailure(QStringLiteral("no bus name"));
    });
}

void NotifierItem::registerWithPanel()
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        m_presentedTo, NotifierWatcher::Path, NotifierWatcher::Interface,
        QStringLiteral("RegisterStatusNotifierItem"));
    call << m_name;
    m_bus.call<void>(
        call, m_interface.get(),
        [this](const BusReply<void> &reply) {
            if (!reply.isValid()) {
                handleFailure(reply.error().name());
                return;
            }
            qCDebug(logTray, "The StatusNotifierWatcher %s has registered the item",
                    qUtf8Printable(m_presentedTo));
            m_failures = 0;
            m_refusalRetry.reset();
        },
        RegistrationTimeout);
}

void NotifierItem::handleFailure(const QString &reason)
{
    const QString panel = m_presentedTo;
    withdraw();
    if (++m_failures < MaximumFailures) {
        m_retry.start();
        return;
    }
    m_refusedBy = panel;
    if (std::exchange(m_warnedAbout, panel) != panel)
        qCWarning(logTray,
                  "The StatusNotifierWatcher %s does not take the item (%s): it goes elsewhere, "
                  "with retries",
                  qUtf8Printable(panel), qUtf8Printable(reason));
    m_refusalRetry.retry();
    updateAvailability();
}

void NotifierItem::withdraw()
{
    m_retry.stop();
    if (m_name.isEmpty())
        return;
    if (m_bus.connection())
        m_bus.call(BusConnection::busCall(QStringLiteral("ReleaseName")) << m_name);
    m_name.clear();
    m_presentedTo.clear();
    m_interface.reset();
    m_menu.reset();
}
