#pragma once

#include <cstddef>
#include <ctime>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "tests/support/Memory.h"

namespace ZroCommon::testing {

/// What is done with hostile input while this lives has to end soon and in little memory.
class Cheap {
public:
    explicit Cheap(std::string what) : m_what(std::move(what)) {}
    Cheap(const Cheap&) = delete;
    Cheap& operator=(const Cheap&) = delete;
    ~Cheap() {
        constexpr std::size_t kMuchMemory = std::size_t{16} << 20U;
        constexpr double kMuchTime = 0.5;  // the library takes 0.02; sanitizers and others more
        EXPECT_LE(m_peak.bytes(), kMuchMemory) << m_what;
        EXPECT_LE(static_cast<double>(std::clock() - m_start) / CLOCKS_PER_SEC, kMuchTime)
            << m_what;
    }

private:
    std::string m_what;
    PeakMemory m_peak;
    std::clock_t m_start = std::clock();
};

}  // namespace ZroCommon::testing
