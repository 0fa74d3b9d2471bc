#pragma once

#include <QObject>

#include <functional>
#include <memory>

/// Makes one test object; registered before main() runs.
using TestFactory = std::function<std::unique_ptr<QObject>()>;
bool registerTest(TestFactory factory);

/// Adds the test class `Type` to the room's program. Use once, at file scope, after the class.
#define METERKIN_TEST(Type)                                                                        \
    [[maybe_unused]] static const bool registered##Type =                                          \
        registerTest([] { return std::make_unique<Type>(); })
