#include "Platform/Linux/Updates/PackageKitError.h"

#include <QCoreApplication>

namespace {

constexpr qsizetype LongestDetails = 300;

/// Null for none.
const char *ownText(PackageKitError error)
{
    switch (error) {
    case PackageKitError::OutOfMemory:
        return QT_TRANSLATE_NOOP("UpdateProblem", "There was not enough memory to update.");
    case PackageKitError::NoNetwork:
        return QT_TRANSLATE_NOOP("UpdateProblem", "There is no network connection.");
    case PackageKitError::NotSupported:
        return QT_TRANSLATE_NOOP("UpdateProblem",
                                 "This system's package manager cannot update a single program. "
                                 "Update the whole system instead.");
    case PackageKitError::SignatureFailure:
    case PackageKitError::BadSignature:
    case PackageKitError::MissingSignature:
    case PackageKitError::CannotInstallUnsigned:
    case PackageKitError::CannotUpdateUnsigned:
        return QT_TRANSLATE_NOOP("UpdateProblem",
                                 "The update does not carry a signature that this computer trusts. "
                                 "Nothing was installed.");
    case PackageKitError::DownloadFailed:
    case PackageKitError::RepositoryNotAvailable:
    case PackageKitError::NoMoreMirrors:
    case PackageKitError::CannotFetchSources:
        return QT_TRANSLATE_NOOP("UpdateProblem",
                                 "The update could not be downloaded. "
                                 "Check the network connection and try again.");
    case PackageKitError::PackageNotFound:
    case PackageKitError::NoPackagesToUpdate:
    case PackageKitError::UpdateNotFound:
        return QT_TRANSLATE_NOOP("UpdateProblem",
                                 "This update is no longer available. Check again.");
    case PackageKitError::DependenciesUnresolved:
    case PackageKitError::CannotRemoveSystemPackage:
    case PackageKitError::FileConflicts:
    case PackageKitError::PackageConflicts:
        return QT_TRANSLATE_NOOP("UpdateProblem",
                                 "The update does not go together with other packages that are "
                                 "installed on this computer.");
    case PackageKitError::CannotGetLock:
    case PackageKitError::CancelledPriority:
    case PackageKitError::LockRequired:
        return QT_TRANSLATE_NOOP("UpdateProblem",
                                 "Another program is installing or updating software. "
                                 "Try again when it is done.");
    case PackageKitError::NoLicenceAgreement:
        return QT_TRANSLATE_NOOP("UpdateProblem",
                                 "The update asks for a licence to be accepted. "
                                 "Install it with the system's software manager.");
    case PackageKitError::InvalidPackageFile:
    case PackageKitError::PackageCorrupt:
        return QT_TRANSLATE_NOOP("UpdateProblem",
                                 "The downloaded update is damaged. Try again later.");
    case PackageKitError::InstallBlocked:
        return QT_TRANSLATE_NOOP("UpdateProblem",
                                 "The system's package manager holds this update back.");
    case PackageKitError::NoSpace:
        return QT_TRANSLATE_NOOP("UpdateProblem", "There is not enough free space on the disk.");
    case PackageKitError::NotAuthorized:
        return QT_TRANSLATE_NOOP("UpdateProblem",
                                 "You were not given the permission to install updates.");
    case PackageKitError::UnfinishedTransaction:
        return QT_TRANSLATE_NOOP("UpdateProblem",
                                 "An earlier installation was interrupted. "
                                 "Finish it with the system's package manager first.");
    case PackageKitError::ServiceEnded:
        return QT_TRANSLATE_NOOP("UpdateProblem",
                                 "PackageKit ended before it was done. Try again.");
    case PackageKitError::ServiceSilent:
        return QT_TRANSLATE_NOOP("UpdateProblem", "PackageKit does not answer. Try again later.");
    case PackageKitError::Unknown:
        break;
    }
    return nullptr;
}

} // namespace

QString UpdateProblem::english() const
{
    return QString::fromUtf8(text).replace(QLatin1String("%1"), detail);
}

QString UpdateProblem::translated() const
{
    return QCoreApplication::translate("UpdateProblem", text).replace(QLatin1String("%1"), detail);
}

UpdateProblem updateProblem(PackageKitError error, const QString &details)
{
    if (const char *text = ownText(error))
        return {text, {}};
    // Cut first, because simplified() takes long on megabytes.
    const QString said = details.left(4 * LongestDetails).simplified().left(LongestDetails);
    if (said.isEmpty())
        return {QT_TRANSLATE_NOOP("UpdateProblem", "The package manager gave no reason."), {}};
    return {QT_TRANSLATE_NOOP("UpdateProblem", "The package manager says: %1"), said};
}
