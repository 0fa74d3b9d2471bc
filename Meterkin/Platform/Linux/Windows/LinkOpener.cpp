#include "Platform/Linux/Windows/LinkOpener.h"

#include "Platform/Linux/BatchScheduling.h"

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
    useOriginalScheduling();
    QDesktopServices::openUrl(link); // from within a handler this is Qt's own way
    useBatchScheduling();
}
