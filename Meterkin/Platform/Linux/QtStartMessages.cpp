#include "Platform/Linux/QtStartMessages.h"

#include <QByteArrayView>
#include <QString>

#include <cstdio>
#include <cstdlib>

#include <unistd.h>

void handleQtStartMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type == QtFatalMsg) {
        std::fprintf(stderr, "meterkin: %s (QT_DEBUG_PLUGINS=1 says more)\n",
                     qPrintable(text.section(u'\n', 0, 0)));
        _exit(EXIT_FAILURE);
    }
    if (type == QtDebugMsg || !QByteArrayView(context.category).startsWith("qt.qpa."))
        std::fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, text)));
}
