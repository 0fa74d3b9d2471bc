#include "Platform/Linux/QtMessages.h"

#include <QString>

#include <cstdio>
#include <cstdlib>

#include <unistd.h>

namespace {

[[noreturn]] void endWith(const QString &line)
{
    std::fprintf(stderr, "meterkin: %s\n", qPrintable(line));
    _exit(EXIT_FAILURE);
}

} // namespace

void handleQtMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type == QtFatalMsg)
        endWith(text.section(u'\n', 0, 0)); // for a plugin QT_DEBUG_PLUGINS=1 says more
    // The only way in which Qt tells of it.
    if (text.startsWith(QStringLiteral("QThread::start: Thread creation error")))
        endWith(text);
    if (type == QtDebugMsg || qstrcmp(context.category, "qt.qpa.plugin") != 0)
        std::fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, text)));
}
