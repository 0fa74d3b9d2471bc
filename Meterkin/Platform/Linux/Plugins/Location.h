#pragma once

#include <QString>

/// Where a plugin of that name is: beside the program, or in the folder it is installed to. Both
/// are writable only for those who could replace the program itself.
QString pluginFile(const QString &name);
