#pragma once

#include <QString>

/// Where a plugin of that name is: beside the program, or where both are installed. Only where
/// those may write who could replace the program itself.
QString pluginFile(const QString &name);
