#include "Platform/Linux/Windows/Dialogs/UpdateDialog.h"

#include "Platform/Linux/Updates/Session.h"

#include <QQuickWindow>

UpdateDialog::UpdateDialog(UpdateSession &session, DisplayServer &displayServer,
                           const DesktopAppearance &appearance)
    : m_style(displayServer)
    , m_dialog(QStringLiteral("UpdateView"),
               {{QStringLiteral("session"), QVariant::fromValue(&session)}}, tr("meterkin Update"),
               m_style, appearance)
{
    connect(&m_dialog, &DialogWindow::closed, this, &UpdateDialog::closed);
}
