#pragma once

#include <QObject>
#include <QString>

/// A plugin of the program.
struct LoadedPlugin {
    QObject *instance = nullptr; ///< never unloaded; null where it cannot be used
    QString problem; ///< why, for the log
    bool isOfOtherBuild = false; ///< it is whole, but does not belong to this program
};

/// Loads the plugin with that file name: the one beside the program, or in the folder that it is
/// installed to. Both are writable only for those who could replace the program itself. None of the
/// code in one with another identifier runs.
LoadedPlugin loadPlugin(const QString &name, const QString &identifier);
