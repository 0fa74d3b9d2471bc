#include "Platform/Linux/Windows/LinkOpener.h"

#include "Platform/Linux/Process/Surroundings.h"
#include "Platform/Log.h"

#include <QDesktopServices>

namespace {

const QStringList schemes{QStringLiteral("https"), QStringLiteral("http")};

} // namespace

LinkOpener::LinkOpener()
{
    for (const QString &scheme : schemes)
        QDesktopServices::setUrlHandler(scheme, this, "open");
}

LinkOpener::~LinkOpener()
{
    for (const QString &scheme : schemes)
        QDesktopServices::unsetUrlHandler(scheme);
}

void LinkOpener::open(const QUrl &link)
{
    useOriginalSurroundings();
    // Called by the handler for this scheme, Qt does not call it again but starts the browser.
    if (!QDesktopServices::openUrl(link))
        qCWarning(logWindows, "No program opens %s: the link stays closed",
                  qPrintable(link.toString()));
    useOwnSurroundings();
}
