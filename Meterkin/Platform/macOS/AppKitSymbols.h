#pragma once

#include <QImage>
#include <QString>

/// The system's drawing of a symbol, of regular weight, beside a text of that many points, with
/// `scale` pixels a point set as its device pixel ratio. Null for a name that the system does not
/// know. Main thread.
QImage systemSymbol(const QString &name, double pointSize, double scale);
