#pragma once

#include <QString>

/// The codes of PackageKit's ErrorCode signal that the user is told apart.
enum class PackageKitError : uint {
    Unknown = 0,
    OutOfMemory = 1,
    NoNetwork = 2,
    NotSupported = 3,
    SignatureFailure = 5,
    PackageNotFound = 8,
    DownloadFailed = 10,
    DependenciesUnresolved = 13,
    CannotRemoveSystemPackage = 20,
    CannotGetLock = 26,
    NoPackagesToUpdate = 27,
    BadSignature = 30,
    MissingSignature = 31,
    NoLicenceAgreement = 34,
    FileConflicts = 35,
    PackageConflicts = 36,
    RepositoryNotAvailable = 37,
    InvalidPackageFile = 38,
    InstallBlocked = 39,
    PackageCorrupt = 40,
    NoMoreMirrors = 43,
    NoSpace = 46,
    NotAuthorized = 48,
    UpdateNotFound = 49,
    CannotInstallUnsigned = 50,
    CannotUpdateUnsigned = 51,
    CannotFetchSources = 64,
    CancelledPriority = 65,
    UnfinishedTransaction = 66,
    LockRequired = 67,

    // Ours: what a service that is gone cannot tell.
    ServiceEnded = 0x10000,
    ServiceSilent,
};

/// What to tell the user, as sentences. `details` is the service's own text, of any length and
/// content; it is used only where we have no better words.
QString updateProblem(PackageKitError error, const QString &details);
