#include "CommandLine.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int UsageError = 2;

int print(const QString &text)
{
    const bool isPrinted = std::fputs(qPrintable(text), stdout) >= 0 && std::fflush(stdout) == 0;
    return isPrinted ? EXIT_SUCCESS : EXIT_FAILURE;
}

int refuse(const QString &reason)
{
    std::fprintf(stderr, "meterkin: %s (--help says more)\n", qPrintable(reason));
    return UsageError;
}

QString version()
{
    const QString commit = QStringLiteral(METERKIN_COMMIT);
    const QString origin = commit.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(commit);
    return QStringLiteral("meterkin %1%2\n").arg(QStringLiteral(METERKIN_VERSION), origin);
}

} // namespace

std::optional<int> answerCommandLine(int argc, char **argv)
{
    const QCommandLineOption helpOption({QStringLiteral("h"), QStringLiteral("help")},
                                        QStringLiteral("Show this help."));
    const QCommandLineOption versionOption({QStringLiteral("v"), QStringLiteral("version")},
                                           QStringLiteral("Show the version."));
    QCommandLineParser parser;
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    parser.setApplicationDescription(
        QStringLiteral("Shows memory, CPU or fan speed in the panel of your desktop, and all three "
                       "on a click.\nWhere it runs already, its dashboard is shown."));
    parser.addOptions({helpOption, versionOption});

    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    if (!parser.parse(arguments))
        return refuse(parser.errorText());
    if (!parser.positionalArguments().isEmpty())
        return refuse(QStringLiteral("Unexpected argument '%1'.")
                          .arg(parser.positionalArguments().constFirst()));
    if (parser.isSet(helpOption)) {
        const QCoreApplication application(argc, argv); // knows the program's name
        return print(parser.helpText());
    }
    if (parser.isSet(versionOption))
        return print(version());
    return std::nullopt;
}
