#pragma once

#include <QObject>

// A test class registers itself with TARVO_TEST(Class) after its definition; the main() of this
// library runs every registered class and fails if any of them does. A class can be named on the
// command line to run it alone; what follows it goes to Qt Test.
namespace testing_support {

bool RegisterTest(QObject* (*make)());

}  // namespace testing_support

#define TARVO_TEST(Class)                                                            \
    [[maybe_unused]] static const bool registered_##Class = testing_support::RegisterTest( \
        []() -> QObject* { return new Class; })
