#pragma once

#include <QByteArrayList>
#include <QGuiApplication>

#include <memory>
#include <vector>

class AppDelegate;
class ProgramHost;

/// The program: sets up Qt, makes sure that one instance runs, and runs the delegate on the back
/// end of this system.
class MeterkinApp {
public:
    MeterkinApp(int argc, char **argv);
    ~MeterkinApp();

    /// The program's exit status.
    int run();

private:
    void restart(); ///< returns only when it fails

    QByteArray m_programToRestart; ///< a path; empty for none
    std::vector<char *> m_arguments; ///< as given, ended by null
    QByteArrayList m_qtOptions;
    std::vector<char *> m_qtArguments; ///< the options, and the arguments as given
    int m_qtArgumentCount;
    std::unique_ptr<QGuiApplication> m_application;
    std::unique_ptr<ProgramHost> m_host;
    std::unique_ptr<AppDelegate> m_delegate;
};
