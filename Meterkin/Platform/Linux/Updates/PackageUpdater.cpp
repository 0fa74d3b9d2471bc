#include "Platform/Linux/Updates/PackageUpdater.h"

#include "Platform/Log.h"

#include <utility>

namespace {

// Bits of PkFilterEnum and PkTransactionFlagEnum in the PackageKit Reference Manual.
constexpr quint64 FilterNone = 1 << 1;
constexpr quint64 FilterInstalled = 1 << 2;
constexpr quint64 OnlyTrusted = 1 << 1;
constexpr quint64 Simulate = 1 << 2;
constexpr quint64 OnlyDownload = 1 << 3;

constexpr std::chrono::minutes BackgroundLimit{30};
constexpr qsizetype LongestNotes = 4000;

QString plainNotes(const QString &text)
{
    QString notes = text.left(LongestNotes);
    notes.removeIf([](QChar character) { return !character.isPrint() && character != u'\n'; });
    notes = notes.trimmed();
    if (text.size() > LongestNotes)
        notes += u'…';
    return notes;
}

} // namespace

PackageUpdater::PackageUpdater(BusConnection &bus, const QString &program,
                               std::chrono::milliseconds timeout, QObject *parent)
    : QObject(parent)
    , m_bus(bus)
    , m_program(program)
    , m_timeout(timeout)
{
    m_limit.setSingleShot(true);
    m_limit.setTimerType(Qt::VeryCoarseTimer);
    m_limit.setInterval(BackgroundLimit);
    connect(&m_limit, &QTimer::timeout, this, &PackageUpdater::cancel);
}

bool PackageUpdater::isCancellable() const
{
    return m_work == Work::Install ? m_transaction && m_transaction->isCancellable()
                                   : m_work != Work::None;
}

void PackageUpdater::check(Manner manner)
{
    m_manner = manner;
    m_own.reset();
    m_found.reset();
    m_isOffline = false;
    setWork(Work::Check);
    const PackageKitTransaction *search = run(
        manner, QStringLiteral("SearchFiles"),
        {QVariant::fromValue(FilterInstalled), QStringList(m_program)}, &PackageUpdater::refresh);
    connect(search, &PackageKitTransaction::packageListed, this,
            [this](PackageKitTransaction::PackageInfo, const PackageIdentifier &package) {
                if (!m_own)
                    m_own = package;
            });
}

void PackageUpdater::refresh()
{
    if (!m_own) {
        fail({QT_TRANSLATE_NOOP("UpdateProblem",
                                "Meterkin was not installed as a package, so "
                                "PackageKit cannot update it."),
              {}});
        return;
    }
    // When it fails, the result is as old as the system's own last refresh.
    const PackageKitTransaction *transaction =
        run(m_manner, QStringLiteral("RefreshCache"), {false});
    connect(transaction, &PackageKitTransaction::finished, this,
            [this](const PackageKitResult &result) {
                m_isOffline = result.ending == PackageKitResult::Ending::Failed
                    && result.error == PackageKitError::NoNetwork;
                listUpdates();
            });
}

void PackageUpdater::listUpdates()
{
    const PackageKitTransaction *list =
        run(m_manner, QStringLiteral("GetUpdates"), {QVariant::fromValue(FilterNone)},
            &PackageUpdater::endCheck);
    connect(list, &PackageKitTransaction::packageListed, this,
            [this](PackageKitTransaction::PackageInfo info, const PackageIdentifier &package) {
                if (package.isSamePackage(*m_own)
                    && info != PackageKitTransaction::PackageInfo::Blocked)
                    m_found = package;
            });
}

void PackageUpdater::endCheck()
{
    m_offer = m_found;
    qCDebug(logUpdates) << "installed:" << m_own->text
                        << "offered:" << (m_offer ? m_offer->text : QString());
    // Without a refresh "up to date" would be a guess.
    if (!m_offer && m_isOffline)
        fail(updateProblem(PackageKitError::NoNetwork, QString()));
    else
        endWork(&PackageUpdater::checked);
}

void PackageUpdater::fetchNotes()
{
    if (m_work != Work::None || !m_offer)
        return;
    const PackageKitTransaction *details =
        run(Manner::Attended, QStringLiteral("GetUpdateDetail"), {QStringList(m_offer->text)});
    connect(details, &PackageKitTransaction::notesListed, this, [this](const QString &text) {
        if (const QString notes = plainNotes(text); !notes.isEmpty())
            emit notesFetched(notes);
    });
    connect(details, &PackageKitTransaction::finished, this, &PackageUpdater::drop);
}

PackageKitTransaction *PackageUpdater::update(Manner manner, quint64 flags, Step next)
{
    // Only our own package is ever passed.
    return run(manner, QStringLiteral("UpdatePackages"),
               {QVariant::fromValue(OnlyTrusted | flags), QStringList(m_offer->text)}, next);
}

void PackageUpdater::download(Manner manner)
{
    if (!m_offer)
        return;
    m_manner = manner;
    m_lostPackage.clear();
    setWork(Work::Download);
    const PackageKitTransaction *simulation =
        update(manner, Simulate, &PackageUpdater::startDownload);
    connect(simulation, &PackageKitTransaction::packageListed, this,
            [this](PackageKitTransaction::PackageInfo info, const PackageIdentifier &package) {
                using Info = PackageKitTransaction::PackageInfo;
                const bool loses =
                    info == Info::Removing || info == Info::Obsoleting || info == Info::Downgrading;
                if (loses && !package.isSamePackage(*m_offer))
                    m_lostPackage = package.name.left(80);
            });
}

void PackageUpdater::startDownload()
{
    // Our button does not say so; the system's own tools show what they remove.
    if (!m_lostPackage.isEmpty()) {
        fail({QT_TRANSLATE_NOOP("UpdateProblem",
                                "The update would remove or replace other software (%1). "
                                "Install it with the system's software manager."),
              m_lostPackage});
        return;
    }
    const PackageKitTransaction *transaction =
        update(m_manner, OnlyDownload, &PackageUpdater::endDownload);
    connect(transaction, &PackageKitTransaction::progressed, this, &PackageUpdater::progressed);
}

void PackageUpdater::endDownload()
{
    endWork(&PackageUpdater::downloaded);
}

void PackageUpdater::install()
{
    if (!m_offer)
        return;
    m_manner = Manner::Authorizing;
    setWork(Work::Install);
    const PackageKitTransaction *transaction =
        update(m_manner, 0, &PackageUpdater::endInstallation);
    connect(transaction, &PackageKitTransaction::progressed, this, &PackageUpdater::progressed);
    connect(transaction, &PackageKitTransaction::cancellableChanged, this,
            &PackageUpdater::cancellableChanged);
}

void PackageUpdater::endInstallation()
{
    m_offer.reset();
    endWork(&PackageUpdater::installed);
}

void PackageUpdater::cancel()
{
    if (m_work == Work::None)
        return;
    if (m_work != Work::Install)
        endWork(&PackageUpdater::cancelled);
    else if (m_transaction)
        m_transaction->cancel();
}

PackageKitTransaction *PackageUpdater::run(Manner manner, const QString &method,
                                           const QVariantList &arguments)
{
    drop();
    m_transaction = new PackageKitTransaction(m_bus, m_timeout, this);
    m_transaction->start(manner, method, arguments);
    return m_transaction;
}

PackageKitTransaction *PackageUpdater::run(Manner manner, const QString &method,
                                           const QVariantList &arguments, Step next)
{
    PackageKitTransaction *transaction = run(manner, method, arguments);
    connect(transaction, &PackageKitTransaction::finished, this,
            [this, method, next](const PackageKitResult &result) {
                if (result.ending == PackageKitResult::Ending::Success) {
                    (this->*next)();
                    return;
                }
                qCDebug(logUpdates) << "PackageKit ended" << method << "with error"
                                    << static_cast<uint>(result.error) << result.details.left(300);
                if (result.ending == PackageKitResult::Ending::Cancelled)
                    endWork(&PackageUpdater::cancelled);
                else
                    fail(updateProblem(result.error, result.details));
            });
    return transaction;
}

void PackageUpdater::drop()
{
    if (!m_transaction)
        return;
    m_transaction->disconnect(this);
    m_transaction->cancel();
    m_transaction->deleteLater();
    m_transaction.clear();
}

void PackageUpdater::setWork(Work work)
{
    if (work != Work::None && m_manner == Manner::Background)
        m_limit.start();
    else
        m_limit.stop();
    if (std::exchange(m_work, work) != work)
        emit workChanged();
}

void PackageUpdater::endWork(void (PackageUpdater::*signal)())
{
    drop();
    setWork(Work::None);
    emit(this->*signal)();
}

void PackageUpdater::fail(const UpdateProblem &problem)
{
    if (m_manner != Manner::Background)
        qCWarning(logUpdates, "%s The installed version stays.", qPrintable(problem.english()));
    drop();
    setWork(Work::None);
    emit failed(problem.translated());
}
