// The main function of the unit tests. The environment variable ZRO_TEST_LOCALE runs them in a
// locale of that name: what the library reads and prints must not depend on it.
#include <cstdlib>
#include <locale>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/NoNetwork.h"

int main(int count, char** arguments) {
    if (const char* name = std::getenv("ZRO_TEST_LOCALE")) {
        std::locale::global(std::locale(name));  // an unknown one throws, and the run fails
    }
    ZroCommon::testing::denyNetwork();
    ::testing::InitGoogleMock(&count, arguments);
    return RUN_ALL_TESTS();
}
