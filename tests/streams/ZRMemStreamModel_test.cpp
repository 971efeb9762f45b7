// Random operations on a memory stream and on a string have to tell the same.
#include <cstdint>
#include <random>

#include <gtest/gtest.h>

#include "tests/support/MemStreamModel.h"

namespace ZroCommon::testing {
namespace {

class MemStreamAgainstString : public ::testing::TestWithParam<std::size_t> {};

TEST_P(MemStreamAgainstString, AgreesOnEveryOperation) {
#ifdef NDEBUG
    constexpr int kSteps = 110000;
#else
    constexpr int kSteps = 15000;
#endif
    std::mt19937 engine(static_cast<std::uint32_t>(GetParam()));
    const auto random = [&engine] {
        return static_cast<std::uint32_t>(engine());
    };
    MemStreamModel model(GetParam());
    for (int i = 0; i < kSteps; ++i) {
        const std::uint32_t code = random();
        const std::uint32_t first = random();
        const std::uint32_t second = random();
        std::string fault = model.step(code, first, second);
        if (fault.empty() && i % 64 == 0) {
            fault = model.finish();
        }
        ASSERT_EQ(fault, "") << "operation " << code % MemStreamModel::kOperations << ", step "
                             << i;
    }
}

INSTANTIATE_TEST_SUITE_P(BlockSizes, MemStreamAgainstString, ::testing::Range<std::size_t>(1, 11));

}  // namespace
}  // namespace ZroCommon::testing
