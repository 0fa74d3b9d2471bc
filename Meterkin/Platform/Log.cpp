#include "Platform/Log.h"

Q_LOGGING_CATEGORY(logSampling, "meterkin.sampling", QtWarningMsg)
Q_LOGGING_CATEGORY(logTray, "meterkin.tray", QtWarningMsg)
Q_LOGGING_CATEGORY(logBus, "meterkin.bus", QtWarningMsg)
Q_LOGGING_CATEGORY(logWindows, "meterkin.windows", QtWarningMsg)
Q_LOGGING_CATEGORY(logHotkey, "meterkin.hotkey", QtWarningMsg)
Q_LOGGING_CATEGORY(logUpdates, "meterkin.updates", QtWarningMsg)
Q_LOGGING_CATEGORY(logStorage, "meterkin.storage", QtWarningMsg)
