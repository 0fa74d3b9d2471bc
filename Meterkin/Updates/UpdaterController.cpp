#include "Updates/UpdaterController.h"

#include <QUrl>

#include <utility>

namespace {

const QString automaticKey = QStringLiteral("SUAutomaticallyUpdate");

} // namespace

UpdaterController::UpdaterController(UpdateFramework &framework, DefaultsStore &store,
                                     QVariantMap dictionary, InformationAlert &alert,
                                     std::chrono::milliseconds feedTimeLimit, QObject *parent)
    : QObject(parent)
    , m_framework(framework)
    , m_store(store)
    , m_dictionary(std::move(dictionary))
    , m_alert(alert)
    , m_feedTimeLimit(feedTimeLimit)
{
    m_store.registerDefaults({{automaticKey, true}});
    m_framework.start();
    setAutomaticallyDownloadsUpdates(m_store.boolean(automaticKey));
    connect(
        &m_framework, &UpdateFramework::canCheckForUpdatesChanged, this,
        [this](bool canCheck) { m_canCheckForUpdates = canCheck; }, Qt::QueuedConnection);
    m_framework.observe();
    connect(&m_framework, &UpdateFramework::unavailableReasonChanged, this,
            [this] { m_unavailableReason = m_framework.unavailableReason(); });
    m_unavailableReason = m_framework.unavailableReason();
}

void UpdaterController::setAutomaticallyDownloadsUpdates(bool automatically)
{
    m_automaticallyDownloadsUpdates = automatically;
    m_framework.setAutomaticallyDownloadsUpdates(automatically);
    m_store.setBoolean(automaticKey, automatically);
}

void UpdaterController::checkForUpdates()
{
    const QString address = textOf(QStringLiteral("SUFeedURL"));
    if (address.isEmpty() && !m_framework.needsFeed()) {
        m_framework.checkForUpdates();
        return;
    }
    const QUrl feed(address, QUrl::StrictMode);
    if (!UpdateFeedProbe::canAsk(feed)) {
        showUpToDateAlert();
        return;
    }
    auto *probe = new UpdateFeedProbe(feed, m_feedTimeLimit, this);
    connect(probe, &UpdateFeedProbe::answered, this, [this, probe](bool listsItems) {
        probe->deleteLater();
        if (!listsItems)
            showUpToDateAlert();
        else
            m_framework.checkForUpdates();
    });
}

void UpdaterController::showUpToDateAlert()
{
    const QString name = textOf(QStringLiteral("CFBundleName"), QStringLiteral("This app"));
    const QString version =
        textOf(QStringLiteral("CFBundleShortVersionString"), QStringLiteral("1.0"));
    m_alert.run(QStringLiteral("You're up to date!"),
                name + u' ' + version + QStringLiteral(" is the latest version."));
}

QString UpdaterController::textOf(const QString &key, const QString &fallback) const
{
    const QVariant entry = m_dictionary.value(key);
    return entry.typeId() == QMetaType::QString ? entry.toString() : fallback;
}
