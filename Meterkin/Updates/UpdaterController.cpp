#include "Updates/UpdaterController.h"

#include "Platform/Log.h"

#include <utility>

namespace {

const QString automaticKey = QStringLiteral("SUAutomaticallyUpdate");

bool isHttpAddress(const QUrl &feed)
{
    return feed.isValid() && !feed.host().isEmpty()
        && (feed.scheme() == u"https" || feed.scheme() == u"http");
}

} // namespace

UpdaterController::UpdaterController(UpdateFramework &framework, DefaultsStore &store,
                                     QVariantMap dictionary, CheckServices services,
                                     QObject *parent)
    : QObject(parent)
    , m_framework(framework)
    , m_store(store)
    , m_dictionary(std::move(dictionary))
    , m_services(std::move(services))
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
        qCDebug(logUpdates, "no feed is needed: the update framework checks");
        m_framework.checkForUpdates();
        return;
    }
    const QUrl feed(address, QUrl::StrictMode);
    if (!isHttpAddress(feed)) {
        qCWarning(logUpdates, "no HTTP address of a feed in this build: '%s'; counts as up to date",
                  qPrintable(address));
        showUpToDateAlert();
        return;
    }
    qCDebug(logUpdates) << "fetching the feed" << feed;
    m_services.readFeed(feed, this, [this](bool listsItems) {
        if (!listsItems)
            showUpToDateAlert();
        else
            m_framework.checkForUpdates();
    });
}

void UpdaterController::showUpToDateAlert()
{
    const QString name = textOf(QStringLiteral("CFBundleName"), tr("This app"));
    const QString version =
        textOf(QStringLiteral("CFBundleShortVersionString"), QStringLiteral("1.0"));
    m_services.showAlert(tr("You're up to date!"),
                         tr("%1 is the latest version.").arg(name + u' ' + version));
}

QString UpdaterController::textOf(const QString &key, const QString &fallback) const
{
    const QVariant entry = m_dictionary.value(key);
    return entry.typeId() == QMetaType::QString ? entry.toString() : fallback;
}
