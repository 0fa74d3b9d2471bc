#include "Platform/Linux/Updates/PackageKitError.h"

namespace {

constexpr qsizetype LongestDetails = 300;

QString ownText(PackageKitError error)
{
    switch (error) {
    case PackageKitError::OutOfMemory:
        return QStringLiteral("There was not enough memory to update.");
    case PackageKitError::NoNetwork:
        return QStringLiteral("There is no network connection.");
    case PackageKitError::NotSupported:
        return QStringLiteral("This system's package manager cannot update a single program. "
                              "Update the whole system instead.");
    case PackageKitError::SignatureFailure:
    case PackageKitError::BadSignature:
    case PackageKitError::MissingSignature:
    case PackageKitError::CannotInstallUnsigned:
    case PackageKitError::CannotUpdateUnsigned:
        return QStringLiteral("The update does not carry a signature that this computer trusts. "
                              "Nothing was installed.");
    case PackageKitError::DownloadFailed:
    case PackageKitError::RepositoryNotAvailable:
    case PackageKitError::NoMoreMirrors:
    case PackageKitError::CannotFetchSources:
        return QStringLiteral("The update could not be downloaded. "
                              "Check the network connection and try again.");
    case PackageKitError::PackageNotFound:
    case PackageKitError::NoPackagesToUpdate:
    case PackageKitError::UpdateNotFound:
        return QStringLiteral("This update is no longer available. Check again.");
    case PackageKitError::DependenciesUnresolved:
    case PackageKitError::CannotRemoveSystemPackage:
    case PackageKitError::FileConflicts:
    case PackageKitError::PackageConflicts:
        return QStringLiteral("The update does not go together with other packages that are "
                              "installed on this computer.");
    case PackageKitError::CannotGetLock:
    case PackageKitError::CancelledPriority:
    case PackageKitError::LockRequired:
        return QStringLiteral("Another program is installing or updating software. "
                              "Try again when it is done.");
    case PackageKitError::NoLicenceAgreement:
        return QStringLiteral("The update asks for a licence to be accepted. "
                              "Install it with the system's software manager.");
    case PackageKitError::InvalidPackageFile:
    case PackageKitError::PackageCorrupt:
        return QStringLiteral("The downloaded update is damaged. Try again later.");
    case PackageKitError::InstallBlocked:
        return QStringLiteral("The system's package manager holds this update back.");
    case PackageKitError::NoSpace:
        return QStringLiteral("There is not enough free space on the disk.");
    case PackageKitError::NotAuthorized:
        return QStringLiteral("You were not given the permission to install updates.");
    case PackageKitError::UnfinishedTransaction:
        return QStringLiteral("An earlier installation was interrupted. "
                              "Finish it with the system's package manager first.");
    case PackageKitError::ServiceEnded:
        return QStringLiteral("PackageKit ended before it was done. Try again.");
    case PackageKitError::ServiceSilent:
        return QStringLiteral("PackageKit does not answer. Try again later.");
    case PackageKitError::Unknown:
        break;
    }
    return QString();
}

} // namespace

QString updateProblem(PackageKitError error, const QString &details)
{
    if (QString text = ownText(error); !text.isEmpty())
        return text;
    // Cut first, because simplified() takes long on megabytes.
    const QString said = details.left(4 * LongestDetails).simplified().left(LongestDetails);
    return said.isEmpty() ? QStringLiteral("The package manager gave no reason.")
                          : QStringLiteral("The package manager says: ") + said;
}
