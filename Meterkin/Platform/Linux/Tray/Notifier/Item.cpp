#include "Platform/Linux/Tray/Notifier/Item.h"

#include "Platform/Linux/Display/ScreenCoordinates.h"
#include "Platform/Linux/Tray/Notifier/PlasmaPanel.h"
#include "Platform/Linux/Tray/Title/Color.h"
#include "Platform/Log.h"

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
constexpr auto PresenceDelay = 1s; // from the registration to the look at the panel's list
constexpr auto StableAge = 10s; // of a presentation that makes up for failures before it
constexpr int ClickedSize = 2; // logical pixels around the click

constexpr uint DoNotQueue = 4; // flag of RequestName
constexpr uint PrimaryOwner = 1; // reply of RequestName

} // namespace

NotifierItem::NotifierItem(BusConnection &bus, TitlePainter &painter, QObject *parent)
    : TrayHost(parent)
    , m_bus(bus)
    , m_painter(painter)
    , m_watcher(bus)
    , m_refusalRetry(FirstRefusalRetry, LongestRefusalRetry)
{
    connect(&m_watcher, &NotifierWatcher::hostChanged, this, &NotifierItem::handleWatcher);
    connect(&m_watcher, &NotifierWatcher::itemsRead, this, &NotifierItem::checkPresence);
    connect(&m_watcher, &NotifierWatcher::itemRemoved, this,
            [this](const QString &item) { m_wasListed = m_wasListed || isIn({item}); });
    m_presenceCheck.setSingleShot(true);
    m_presenceCheck.setInterval(PresenceDelay);
    connect(&m_presenceCheck, &QTimer::timeout, &m_watcher, &NotifierWatcher::readItems);
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
        m_wasListed = false;
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
    // Panels that do not know the place give the origin. Waybar counts from the item's own corner.
    const bool isPlace =
        m_clickedAt && !m_clickedAt->isNull() && m_watcher.host().kind != NotifierHostKind::Wide;
    const std::optional<QPoint> position = isPlace ? logicalPosition(*m_clickedAt) : std::nullopt;
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
        if (qEnvironmentVariable("XDG_CURRENT_DESKTOP").contains(QStringLiteral("GNOME-Classic")))
            break; // light
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
    m_address.emplace(m_watcher.host().kind);
    m_presentedTo = m_watcher.owner();
    m_age.start();
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
    connection.registerObject(m_address->objectPath(), m_interface.get(),
                              QDBusConnection::ExportAllProperties | QDBusConnection::ExportAllSlots
                                  | QDBusConnection::ExportScriptableSignals);
    connection.registerObject(NotifierInterface::MenuPath, m_menu.get(),
                              QDBusConnection::ExportAllProperties
                                  | QDBusConnection::ExportAllSlots);

    if (m_address->isPath()) {
        registerWithPanel();
        return;
    }
    QDBusMessage request = BusConnection::busCall(QStringLiteral("RequestName"));
    request << m_address->text() << DoNotQueue;
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
    call << m_address->text();
    m_bus.call<void>(
        call, m_interface.get(),
        [this](const BusReply<void> &reply) {
            if (!reply.isValid()) {
                handleFailure(reply.error().name());
                return;
            }
            qCDebug(logTray, "The StatusNotifierWatcher %s has registered the item",
                    qUtf8Printable(m_presentedTo));
            m_isRegistered = true;
            m_presenceCheck.start();
        },
        RegistrationTimeout);
}

void NotifierItem::checkPresence(const QStringList &items)
{
    if (!m_isRegistered)
        return;
    if (isIn(items)) {
        m_wasListed = true;
    } else if (m_wasListed || m_failures + 1 < MaximumFailures) {
        qCDebug(logTray, "The StatusNotifierWatcher %s has lost the item",
                qUtf8Printable(m_presentedTo));
        handleFailure(QStringLiteral("it is missing in its list"));
    } else {
        // It has taken the item each time, so it rather does not list what it shows.
        qCDebug(logTray, "The list of the StatusNotifierWatcher %s is not relied on",
                qUtf8Printable(m_presentedTo));
    }
}

/// Whether a watcher's list has the present item.
bool NotifierItem::isIn(const QStringList &items) const
{
    return m_address && m_address->isIn(items, m_bus.connection()->baseService());
}

void NotifierItem::handleFailure(const QString &reason)
{
    const QString panel = m_presentedTo;
    if (m_age.hasExpired(std::chrono::milliseconds(StableAge).count())) {
        m_failures = 0;
        m_refusalRetry.reset();
    }
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
    m_presenceCheck.stop();
    if (!m_address)
        return;
    if (m_bus.connection()) {
        if (m_address->isPath())
            m_interface->hide(); // there is no name to release, at which panels would drop it
        else
            m_bus.call(BusConnection::busCall(QStringLiteral("ReleaseName")) << m_address->text());
    }
    m_address.reset();
    m_isRegistered = false;
    m_presentedTo.clear();
    m_interface.reset();
    m_menu.reset();
}
