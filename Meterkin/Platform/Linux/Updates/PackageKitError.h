#pragma once

#include <QString>

/// Those codes of PackageKit's ErrorCode signal (PkErrorEnum in its reference manual) for which the
/// user gets a text of our own.
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

    // Our own: the service is gone, or does not answer.
    ServiceEnded = 0x10000,
    ServiceSilent,
};

/// Sentences for the user, which the log has in English.
struct UpdateProblem {
    const char *text; ///< English, with %1 for the detail if there is one
    QString detail;

    QString english() const;
    QString translated() const;
};

/// `details` is the service's text, of any length and content; it is used
/// only for codes that have no text here.
UpdateProblem updateProblem(PackageKitError error, const QString &details);
