#pragma once

#include <QtGlobal>

/// A message handler for the time in which Qt starts: where Qt would abort, having no plugin for
/// any of the displays, the program ends with one line and status 1. What Qt says of a plugin that
/// it passes over is left out. Any thread.
void handleQtStartMessage(QtMsgType type, const QMessageLogContext &context, const QString &text);
