#pragma once

#include "Platform/InformationAlert.h"
#include "Platform/Linux/Windows/Dialogs/Window.h"

#include <QQueue>

/// Alerts one after the other: two with the same text in two windows would look like an OK that
/// does not work.
class LinuxInformationAlert : public QObject, public InformationAlert {
    Q_OBJECT

public:
    /// Both outlive it.
    LinuxInformationAlert(WindowStyle &style, const DesktopAppearance &appearance,
                          QObject *parent = nullptr);

    void run(const QString &messageText, const QString &informativeText) override;

private:
    struct Message {
        QString text;
        QString informativeText;
    };

    void showNext();

    WindowStyle &m_style;
    const DesktopAppearance &m_appearance;
    QQueue<Message> m_waiting;
    std::unique_ptr<DialogWindow> m_shown; ///< null while there is none
};
