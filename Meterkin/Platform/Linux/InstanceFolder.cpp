#include "Platform/Linux/InstanceFolder.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QSysInfo>

#include <xcb/xcb.h>

#include <cstdlib>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

/// The same for every way to write one display: each has a panel of its own.
QByteArray displayName()
{
    char *host = nullptr;
    int number = 0;
    if (qEnvironmentVariableIsSet("DISPLAY")
        && xcb_parse_display(nullptr, &host, &number, nullptr) != 0) {
        QByteArray name =
            (qstrcmp(host, "unix") == 0 ? "" : host) + (':' + QByteArray::number(number));
        std::free(host);
        return name;
    }
    const QDir runtime(qEnvironmentVariable("XDG_RUNTIME_DIR"));
    return QFile::encodeName(runtime.absoluteFilePath(qEnvironmentVariable("WAYLAND_DISPLAY")));
}

/// Not open unless it is this user's, and nobody else may write to it.
Descriptor openOurs(int parent, const QByteArray &path, int flags = 0)
{
    Descriptor folder(openat(parent, path.constData(), O_PATH | O_DIRECTORY | O_CLOEXEC | flags));
    struct stat status { };
    const bool isOurs = fstat(folder.number(), &status) == 0 && status.st_uid == geteuid()
        && (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
    return isOurs ? std::move(folder) : Descriptor(-1);
}

Descriptor makeFolder(const Descriptor &parent, QByteArray name)
{
    name.replace('/', '_');
    mkdirat(parent.number(), name.constData(), S_IRWXU);
    return openOurs(parent.number(), name, O_NOFOLLOW);
}

} // namespace

Descriptor openInstanceFolder()
{
    // The second for whoever comes from another session, as by su or cron.
    for (const QByteArray &path :
         {qgetenv("XDG_RUNTIME_DIR"), "/run/user/" + QByteArray::number(geteuid())}) {
        const Descriptor runtime = openOurs(path.startsWith('/') ? AT_FDCWD : -1, path);
        Descriptor folder = makeFolder(runtime, "meterkin" + displayName());
        if (folder.isOpen())
            return folder;
    }
    // A home folder may be shared by machines, each of which has displays of its own.
    const QString settings = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + QStringLiteral("/meterkin");
    QDir().mkpath(settings);
    const Descriptor folder(
        open(QFile::encodeName(settings).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    return makeFolder(folder, QSysInfo::machineHostName().toLocal8Bit() + displayName());
}
