// What opt-in limits refuse of the network.
#include <atomic>
#include <chrono>
#include <memory>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "tests/support/HttpServer.h"
#include "tests/support/Streams.h"
#include "tests/support/Text.h"
#include "zro/foundation/ZRResourceLimits.h"
#include "zro/uri/ZRUri.h"

namespace ZroCommon::testing {
namespace {

using namespace std::chrono_literals;

// Answers, sends ten bytes and then one every 50 ms without end; or nothing at all.
class HttpLimits : public ::testing::Test {
protected:
    ~HttpLimits() override { ZRResourceLimits::setCurrent({}); }

    /// What was read, or the error text.
    std::string fetch(const ZRResourceLimits& limits, const std::string& path = "/drip") const {
        ZRResourceLimits::setCurrent(limits);
        UnicodeString error;
        const ZRUri uri(text(m_server.url(path)), URISTR_PATH_OR_URI_CSS);
        const std::unique_ptr<std::istream> stream(uri.getStream(nullptr, &error));
        return stream == nullptr ? utf8(error) : restOf(*stream);
    }

private:
    HttpServer m_server{[](HttpConnection& connection, const std::string& path) {
        const auto start = std::chrono::steady_clock::now();
        bool goes = path != "/silence"
                    && connection.send("HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n0123456789");
        while (std::chrono::steady_clock::now() - start < 2200ms && (goes || path == "/silence")) {
            std::this_thread::sleep_for(50ms);
            goes = goes && connection.send("x");
        }
    }};
};

TEST_F(HttpLimits, EndsAnAnswerThatIsTooLongOrTakesTooLong) {
    ZRResourceLimits limits;
    limits.fetchedBytes = 15;
    EXPECT_LE(fetch(limits).size(), 15U);
    limits = {};
    limits.fetchSeconds = 1;
    const std::string second = fetch(limits);
    EXPECT_TRUE(second.starts_with("0123456789x") && second.size() < 50) << second;
    limits = {};
    limits.idleSeconds = 1;
    EXPECT_EQ(fetch(limits, "/silence"), "Cannot open URL: 2EE2");
}

TEST_F(HttpLimits, EndsWaitingWhenCancelled) {
    std::atomic<bool> cancel{false};
    ZRResourceLimits limits;
    limits.cancelFlag = &cancel;
    std::thread later([&cancel] {
        std::this_thread::sleep_for(300ms);
        cancel = true;
    });
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(fetch(limits).starts_with("0123456789"));
    EXPECT_EQ(fetch(limits, "/silence"), "Cannot open URL: 2EE4");
    EXPECT_LT(std::chrono::steady_clock::now() - start, 3s);
    later.join();
}

}  // namespace
}  // namespace ZroCommon::testing
