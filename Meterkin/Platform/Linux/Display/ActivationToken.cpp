#include "Platform/Linux/Display/ActivationToken.h"

#include "Platform/Linux/Display/Server.h"
#include "Platform/Linux/Display/X11.h"

#include <QByteArray>
#include <QWindow>

namespace {

constexpr const char *tokenVariable = "XDG_ACTIVATION_TOKEN"; // where Qt looks for it

constexpr qsizetype MostLength = 256; // bytes; real ones are much shorter

} // namespace

void acceptActivationToken(const QString &token)
{
    const QByteArray bytes = token.toUtf8();
    if (bytes.isEmpty() || bytes.size() > MostLength || bytes.contains('\0'))
        return;
    if (isOnX11())
        endX11Startup(bytes);
    else
        qputenv(tokenVariable, bytes);
}

void activateWindow(QWindow &window)
{
    window.requestActivate();
    qunsetenv(tokenVariable);
}

void spendActivationToken(QWindow &window)
{
    if (qEnvironmentVariableIsSet(tokenVariable) && !isOnX11())
        activateWindow(window);
}
