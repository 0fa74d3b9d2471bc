#pragma once

#include <QtGlobal>

/// A message handler that writes to standard error. Where Qt would abort, as without a plugin for
/// any of the displays, or would wait for ever for a thread that it cannot start, the program ends
/// with one line and status 1. What Qt says of a plugin that it passes over is left out. Any
/// thread.
void handleQtMessage(QtMsgType type, const QMessageLogContext &context, const QString &text);
