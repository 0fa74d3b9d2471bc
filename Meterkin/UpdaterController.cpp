#include "UpdaterController.h"

namespace {

const QString automaticKey = QStringLiteral("SUAutomaticallyUpdate");

} // namespace

UpdaterController::UpdaterController(UpdateFramework *framework, DefaultsStore &store,
                                     QObject *parent)
    : QObject(parent)
    , m_framework(framework)
    , m_store(store)
{
    m_store.registerDefaults({{automaticKey, true}});
    if (m_framework != nullptr)
        m_framework->start();
    setAutomaticallyDownloadsUpdates(m_store.boolean(automaticKey));
    if (m_framework == nullptr)
        return;
    connect(
        m_framework, &UpdateFramework::canCheckForUpdatesChanged, this,
        [this](bool canCheck) { m_canCheckForUpdates = canCheck; }, Qt::QueuedConnection);
    m_canCheckForUpdates = m_framework->canCheckForUpdates();
    connect(m_framework, &UpdateFramework::unavailableReasonChanged, this,
            [this] { m_unavailableReason = m_framework->unavailableReason(); });
    m_unavailableReason = m_framework->unavailableReason();
}

void UpdaterController::setAutomaticallyDownloadsUpdates(bool automatically)
{
    m_automaticallyDownloadsUpdates = automatically;
    if (m_framework != nullptr)
        m_framework->setAutomaticallyDownloadsUpdates(automatically);
    m_store.setBoolean(automaticKey, automatically);
}

void UpdaterController::checkForUpdates()
{
    if (m_framework != nullptr)
        m_framework->checkForUpdates();
}
