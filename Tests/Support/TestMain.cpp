#include "Support/TestMain.h"

#include <QGuiApplication>
#include <QtTest>

#include <vector>

namespace {

std::vector<TestFactory> &factories()
{
    static std::vector<TestFactory> list;
    return list;
}

} // namespace

bool registerTest(TestFactory factory)
{
    factories().push_back(std::move(factory));
    return true;
}

int main(int argc, char **argv)
{
    METERKIN_APPLICATION application(argc, argv);
    // The crash handler starts a debugger, which holds a crashed test up for minutes.
    const QStringList arguments = QCoreApplication::arguments()
        << QStringLiteral("-nocrashhandler");
    int failures = 0;
    for (const TestFactory &factory : factories()) {
        const std::unique_ptr<QObject> test = factory();
        failures += QTest::qExec(test.get(), arguments);
    }
    // A room without a test is a mistake in its build, not a success.
    return factories().empty() ? 1 : failures;
}
