#include "Platform/Linux/Updates/UpdateFramework.h"

#include "Platform/Linux/Process/ProgramLocation.h"
#include "Platform/Log.h"

#include <utility>

namespace {

const QString announcedKey =
    QStringLiteral("updateAnnounced"); // the version of the last notification
const QString notificationIdentifier = QStringLiteral("org.meterkin.Meterkin.update");
constexpr qsizetype LongestVersion = 60;

QString shownVersion(const PackageIdentifier &package)
{
    return package.version.left(LongestVersion);
}

} // namespace

LinuxUpdateFramework::LinuxUpdateFramework(Dependencies dependencies, Times times, QObject *parent)
    : UpdateFramework(parent)
    , m_dependencies(std::move(dependencies))
    , m_times(times)
    , m_updater(m_dependencies.systemBus, m_dependencies.program, times.timeout)
    , m_schedule(m_dependencies.store)
{
    connectUpdater();
    connect(&m_schedule, &UpdateSchedule::due, this, &LinuxUpdateFramework::checkInBackground);
    connect(&m_dependencies.notifications, &NotificationCentre::clicked, this,
            &LinuxUpdateFramework::handleClick);
    connect(&m_dependencies.replacement, &ReplacementWatch::replaced, this,
            &LinuxUpdateFramework::handleReplaced);
    updateAvailability();
}

LinuxUpdateFramework::~LinuxUpdateFramework() = default;

void LinuxUpdateFramework::connectUpdater()
{
    connect(&m_updater, &PackageUpdater::workChanged, this,
            &LinuxUpdateFramework::updateAvailability);
    connect(&m_updater, &PackageUpdater::checked, this, &LinuxUpdateFramework::handleChecked);
    connect(&m_updater, &PackageUpdater::downloaded, this, &LinuxUpdateFramework::handleDownloaded);
    connect(&m_updater, &PackageUpdater::installed, this, &LinuxUpdateFramework::handleInstalled);
    connect(&m_updater, &PackageUpdater::failed, this, &LinuxUpdateFramework::handleFailed);
    connect(&m_updater, &PackageUpdater::cancelled, this, [this] {
        if (m_isBackground)
            m_schedule.noteCheck();
        else if (m_session)
            showOffer();
    });
    connect(&m_updater, &PackageUpdater::notesFetched, this, [this](const QString &notes) {
        if (m_session)
            m_session->bindableNotes().setValue(notes);
    });
    connect(&m_updater, &PackageUpdater::progressed, this, [this](int percent) {
        if (m_session && !m_isBackground)
            m_session->bindablePercent().setValue(percent);
    });
    connect(&m_updater, &PackageUpdater::cancellableChanged, this, [this] {
        if (m_session && !m_isBackground)
            m_session->bindableIsCancellable().setValue(m_updater.isCancellable());
    });
}

void LinuxUpdateFramework::start()
{
    m_service = std::make_unique<BusService>(m_dependencies.systemBus,
                                             QStringLiteral("org.freedesktop.PackageKit"));
    connect(m_service.get(), &BusService::availableChanged, this, [this] {
        updateAvailability();
        if (m_service->isAvailable())
            m_schedule.start(m_times.firstCheck);
        else
            m_schedule.stop();
    });
}

void LinuxUpdateFramework::setAutomaticallyDownloadsUpdates(bool automatically)
{
    m_downloadsAutomatically = automatically;
}

void LinuxUpdateFramework::updateAvailability()
{
    const bool isAvailable = m_service && m_service->isAvailable();
    const QString reason = isAvailable
        ? QString()
        : tr("Updates need PackageKit, which is not installed on this computer.");
    if (std::exchange(m_reason, reason) != reason) {
        qCDebug(logUpdates) << "PackageKit is available:" << isAvailable;
        emit unavailableReasonChanged();
    }
    const bool canCheck = isAvailable && m_updater.work() == PackageUpdater::Work::None;
    if (std::exchange(m_canCheck, canCheck) != canCheck)
        emit canCheckForUpdatesChanged(canCheck);
}

void LinuxUpdateFramework::checkForUpdates()
{
    // A check that the user asks for ends one in the background.
    const bool isBusy = m_updater.work() != PackageUpdater::Work::None && !m_isBackground;
    if (!m_service || !m_service->isAvailable() || isBusy)
        return;
    if (openWindow())
        beginCheck();
}

void LinuxUpdateFramework::handleClick(const QString &identifier)
{
    if (identifier != notificationIdentifier)
        return;
    if (m_session) {
        openWindow();
    } else if (m_updater.offer()) {
        if (openWindow())
            showOffer();
    } else {
        checkForUpdates(); // the notification is that of an earlier run
    }
}

bool LinuxUpdateFramework::openWindow()
{
    if (!m_session) {
        m_session = std::make_unique<UpdateSession>();
        m_session->bindableCurrentVersion().setValue(m_dependencies.version);
        connect(m_session.get(), &UpdateSession::installRequested, this,
                &LinuxUpdateFramework::beginInstallation);
        connect(m_session.get(), &UpdateSession::cancelRequested, this,
                &LinuxUpdateFramework::cancel);
        connect(m_session.get(), &UpdateSession::retryRequested, this,
                &LinuxUpdateFramework::beginCheck);
        connect(m_session.get(), &UpdateSession::restartRequested, this, [this] {
            if (m_session->phase() == Phase::Installed)
                m_dependencies.restartOffer.accept(programToStart());
        });
    }
    if (!m_window) {
        m_window = m_dependencies.makeWindow(*m_session);
        if (!m_window)
            return false;
        connect(m_window.get(), &UpdateWindow::closed, this, &LinuxUpdateFramework::handleClosed);
    }
    m_window->present();
    return true;
}

void LinuxUpdateFramework::handleClosed()
{
    m_window->disconnect(this);
    m_window.release()->deleteLater();
    // An installation continues; its result is shown later.
    if (!m_isBackground && m_updater.work() == PackageUpdater::Work::Install)
        return;
    m_session->disconnect(this);
    m_session.release()->deleteLater(); // after the window, in this order
    if (!m_isBackground)
        m_updater.cancel();
}

void LinuxUpdateFramework::beginCheck()
{
    m_isBackground = false;
    m_session->bindableOfferedVersion().setValue(QString());
    m_session->bindableNotes().setValue(QString());
    m_session->bindableIsDownloaded().setValue(false);
    m_updater.check(PackageUpdater::Manner::Attended);
    enter(Phase::Checking);
}

void LinuxUpdateFramework::beginInstallation()
{
    if (m_session->phase() != Phase::Offered)
        return;
    if (!m_updater.offer()) { // a later check in the background found none
        beginCheck();
        return;
    }
    m_isBackground = false;
    m_updater.download(PackageUpdater::Manner::Attended);
    enter(Phase::Downloading);
}

void LinuxUpdateFramework::cancel()
{
    if (m_session->phase() == Phase::Checking)
        m_window->close();
    else
        m_updater.cancel();
}

void LinuxUpdateFramework::showOffer()
{
    if (!m_updater.offer()) {
        m_session->bindableProblem().setValue(tr("The package manager has cancelled the check."));
        enter(Phase::Failed);
        return;
    }
    m_session->bindableOfferedVersion().setValue(shownVersion(*m_updater.offer()));
    m_session->bindableIsDownloaded().setValue(m_updater.offer()->text == m_downloaded);
    enter(Phase::Offered);
    if (m_session->notes().isEmpty())
        m_updater.fetchNotes();
}

void LinuxUpdateFramework::enter(Phase phase)
{
    m_session->bindablePercent().setValue(-1);
    m_session->bindableIsCancellable().setValue(!m_isBackground && m_updater.isCancellable());
    if (phase != Phase::Failed)
        m_session->bindableProblem().setValue(QString());
    m_session->bindablePhase().setValue(phase);
}

void LinuxUpdateFramework::checkInBackground()
{
    if (!m_canCheck || m_window)
        return; // the schedule repeats it
    m_isBackground = true;
    m_updater.check(PackageUpdater::Manner::Background);
}

void LinuxUpdateFramework::handleChecked()
{
    m_schedule.noteCheck();
    if (m_isBackground && m_updater.offer()) {
        if (m_downloadsAutomatically)
            m_updater.download(PackageUpdater::Manner::Background);
        else
            announce();
    } else if (!m_isBackground && m_session) {
        if (m_updater.offer())
            showOffer();
        else
            enter(m_dependencies.replacement.isReplaced() ? Phase::Installed : Phase::UpToDate);
    }
}

void LinuxUpdateFramework::handleDownloaded()
{
    m_downloaded = m_updater.offer()->text;
    if (m_isBackground) {
        announce();
    } else if (m_session) {
        m_session->bindableIsDownloaded().setValue(true);
        m_updater.install();
        enter(Phase::Installing);
    }
}

void LinuxUpdateFramework::handleInstalled()
{
    if (!m_session)
        return;
    enter(Phase::Installed);
    if (!m_window)
        m_dependencies.restartOffer.post(programToStart());
}

void LinuxUpdateFramework::handleReplaced()
{
    // While an update is being installed, and in its window afterwards, the user learns of it here.
    const bool isTold = m_session
        && (m_session->phase() == Phase::Installing || m_session->phase() == Phase::Installed);
    if (!isTold)
        m_dependencies.restartOffer.post(programToStart());
}

void LinuxUpdateFramework::handleFailed(const QString &problem)
{
    if (m_isBackground) {
        m_schedule.noteCheck();
        // An update that cannot be downloaded in advance is still announced.
        if (m_updater.offer())
            announce();
    } else if (m_session) {
        m_session->bindableProblem().setValue(problem);
        enter(Phase::Failed);
        if (!m_window)
            notify(tr("Meterkin could not be updated"), problem);
    }
}

void LinuxUpdateFramework::announce()
{
    const QString version = shownVersion(*m_updater.offer());
    if (m_dependencies.store.text(announcedKey) == version)
        return;
    m_dependencies.store.setText(announcedKey, version);
    notify(tr("Meterkin %1 is available").arg(version),
           tr("Choose this notification to install it."));
}

void LinuxUpdateFramework::notify(const QString &title, const QString &body)
{
    m_dependencies.notifications.post({notificationIdentifier, title, body});
}
