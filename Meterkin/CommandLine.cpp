#include "CommandLine.h"

#include "Translation.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int UsageError = 2;

// Qt's own words around ours, which are translated with them: its catalogues may be missing.
[[maybe_unused]] constexpr const char *QtTexts[] = {
    QT_TRANSLATE_NOOP("QCommandLineParser", "Usage: %1"),
    QT_TRANSLATE_NOOP("QCommandLineParser", "[options]"),
    QT_TRANSLATE_NOOP("QCommandLineParser", "Options:"),
    QT_TRANSLATE_NOOP("QCommandLineParser", "Unknown option '%1'."),
    QT_TRANSLATE_NOOP("QCommandLineParser", "Unknown options: %1."),
    QT_TRANSLATE_NOOP("QCommandLineParser", "Unexpected value after '%1'."),
};

int print(const QString &text)
{
    const bool isPrinted = std::fputs(qPrintable(text), stdout) >= 0 && std::fflush(stdout) == 0;
    return isPrinted ? EXIT_SUCCESS : EXIT_FAILURE;
}

int refuse(const QString &reason)
{
    const QString line = QCoreApplication::translate("CommandLine", "%1 (--help says more)");
    std::fprintf(stderr, "meterkin: %s\n", qPrintable(line.arg(reason)));
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
    if (argc < 2)
        return std::nullopt;
    const QCoreApplication application(argc, argv); // for the translation and the program's name
    loadTranslation();

    const QCommandLineOption helpOption(
        {QStringLiteral("h"), QStringLiteral("help")},
        QCoreApplication::translate("CommandLine", "Show this help."));
    const QCommandLineOption versionOption(
        {QStringLiteral("v"), QStringLiteral("version")},
        QCoreApplication::translate("CommandLine", "Show the version."));
    QCommandLineParser parser;
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    parser.setApplicationDescription(QCoreApplication::translate(
        "CommandLine",
        "Shows memory, CPU or fan speed in the panel of your desktop, and all three on a click.\n"
        "Where it runs already, its dashboard is shown."));
    parser.addOptions({helpOption, versionOption});

    if (!parser.parse(QCoreApplication::arguments()))
        return refuse(parser.errorText());
    if (!parser.positionalArguments().isEmpty())
        return refuse(QCoreApplication::translate("CommandLine", "Unexpected argument '%1'.")
                          .arg(parser.positionalArguments().constFirst()));
    if (parser.isSet(helpOption))
        return print(parser.helpText());
    if (parser.isSet(versionOption))
        return print(version());
    return std::nullopt;
}
