#pragma once

#include <string>
#include <string_view>

namespace ZroCommon::testing {

/// Why a test is skipped: `GTEST_SKIP() << noData(ZRO_TEST_DATA_DIR "/fo");`
inline std::string noData(std::string_view path) {
    return "missing: " + std::string(path)
           + " (the CMake variable ZRO_TEST_DATA_DIR says where the test data lies)";
}

/// \param what  "the program openssl", and how to come by it: "the Debian package openssl has it"
inline std::string missing(std::string_view what, std::string_view remedy) {
    return "missing: " + std::string(what) + " (" + std::string(remedy) + ")";
}

}  // namespace ZroCommon::testing
