#pragma once

#include <QByteArrayList>
#include <QString>

#include <functional>
#include <memory>

class Platform;

/// How the program lives on a system: what comes before Qt, who else runs, what comes after.
/// Main thread only.
class ProgramHost {
public:
    virtual ~ProgramHost() = default;

    /// Of several starts, one may run.
    enum class Claim {
        First, ///< no other instance runs
        Told, ///< another one runs, and has been told of this start
        Unanswered, ///< another one runs, and does not answer
    };

    /// Before Qt is started; the options to start it with. Ends the program where it cannot run.
    static QByteArrayList prepare();
    /// That of this system, once Qt has been started; the back end defines it.
    static std::unique_ptr<ProgramHost> make();

    /// To be asked once. In the first instance `startedAgain` runs when somebody starts the program
    /// once more.
    virtual Claim claimInstance(std::function<void()> startedAgain) = 0;
    /// Made when it is first asked for.
    virtual Platform &platform() = 0;
    /// The program that is to be started once this one has ended; empty for none.
    virtual QString programToRestart() const { return {}; }
};
