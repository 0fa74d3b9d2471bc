#pragma once

#include <QImage>
#include <QString>

/// The system symbol of that name in semibold or regular weight, sized for text of `pointSize`
/// points. `scale`, in pixels a point, becomes the device pixel ratio. Null for an unknown name.
/// Main thread only.
QImage systemSymbol(const QString &name, double pointSize, bool isSemibold, double scale);
