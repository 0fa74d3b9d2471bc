#pragma once

#include <QLoggingCategory>

// "meterkin.sampling" and so on. A warning says, once, what the user asked for and does not happen,
// what refused it and what is done instead. Details are debug messages: QT_LOGGING_RULES asks for
// them, "meterkin.*=true" for all.
Q_DECLARE_LOGGING_CATEGORY(logSampling)
Q_DECLARE_LOGGING_CATEGORY(logTray)
Q_DECLARE_LOGGING_CATEGORY(logBus)
Q_DECLARE_LOGGING_CATEGORY(logWindows)
Q_DECLARE_LOGGING_CATEGORY(logHotkey)
Q_DECLARE_LOGGING_CATEGORY(logUpdates)
Q_DECLARE_LOGGING_CATEGORY(logStorage)
