#include "Platform/Linux/Windows/Dialogs/InformationAlert.h"

#include <QGuiApplication>

LinuxInformationAlert::LinuxInformationAlert(WindowStyle &style,
                                             const DesktopAppearance &appearance, QObject *parent)
    : QObject(parent)
    , m_style(style)
    , m_appearance(appearance)
{
}

void LinuxInformationAlert::run(const QString &messageText, const QString &informativeText)
{
    m_waiting.enqueue({messageText, informativeText});
    if (!m_shown)
        showNext();
}

void LinuxInformationAlert::showNext()
{
    m_shown.reset();
    if (m_waiting.isEmpty())
        return;
    const Message message = m_waiting.dequeue();
    m_shown = std::make_unique<DialogWindow>(
        QStringLiteral("InformationAlertView"),
        QVariantMap{{QStringLiteral("messageText"), message.text},
                    {QStringLiteral("informativeText"), message.informativeText}},
        QGuiApplication::applicationDisplayName(), m_style, m_appearance);
    m_shown->window().setModality(Qt::ApplicationModal);
    // It blocks the onboarding window, which stays on top: it must not be covered by it.
    m_shown->window().setFlag(Qt::WindowStaysOnTopHint);
    connect(m_shown.get(), &DialogWindow::closed, this, &LinuxInformationAlert::showNext,
            Qt::QueuedConnection);
    m_shown->present();
}
