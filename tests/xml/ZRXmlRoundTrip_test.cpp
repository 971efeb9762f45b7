#include <cstdint>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/SerializerScript.h"

namespace ZroCommon::testing {
namespace {

std::vector<std::uint8_t> randomBytes(std::mt19937& random) {
    std::vector<std::uint8_t> bytes(random() % 200);
    for (std::uint8_t& byte : bytes) {
        byte = static_cast<std::uint8_t>(random());
    }
    return bytes;
}

TEST(ZRXmlRoundTrip, WhatTheSerializerWritesParsesAgain) {
    std::mt19937 random(1998);  // NOLINT(cert-msc51-cpp): the same on every run
    for (int round = 0; round < 300; ++round) {
        const std::vector<std::uint8_t> bytes = randomBytes(random);
        const SensibleDocument document(Decisions(bytes), round % 4 == 0);
        ASSERT_EQ(parsedBack(document.bytes()), document.expected()) << document.bytes();
    }
}

TEST(ZRXmlRoundTrip, WildCallsOfTheSerializerDoNoHarm) {
    std::mt19937 random(2000);  // NOLINT(cert-msc51-cpp): the same on every run
    for (int round = 0; round < 300; ++round) {
        const std::vector<std::uint8_t> bytes = randomBytes(random);
        EXPECT_NO_THROW(makeWildCalls(Decisions(bytes)));
    }
}

}  // namespace
}  // namespace ZroCommon::testing
