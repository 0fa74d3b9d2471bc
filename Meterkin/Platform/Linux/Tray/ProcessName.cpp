#include "Platform/Linux/Tray/ProcessName.h"

#include <QFile>

QString processName(quint32 process)
{
    QFile file(QStringLiteral("/proc/%1/comm").arg(process));
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    return QString::fromLocal8Bit(file.readAll()).trimmed();
}
