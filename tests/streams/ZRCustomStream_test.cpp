#include "zro/streams/ZRCustomStream.h"

#include <algorithm>
#include <climits>
#include <stdexcept>
#include <vector>

#include "tests/support/Deflate.h"
#include "tests/support/Streams.h"
#include "tests/support/Test.h"

namespace ZroCommon::testing {
namespace {

// Gives its bytes in pieces, keeps what is written, and answers as it is told instead.
class Controller : public ZRCustomStreamController {
public:
    explicit Controller(std::string bytes = "", std::size_t step = 8192)
        : m_bytes(std::move(bytes)), m_step(step) {}

    void close() override { throw std::logic_error("nobody calls this"); }

    int read(char* buffer, int size) override {
        EXPECT_EQ(size, 8192);
        if (!answers.empty()) {
            const int answer = answers.back();
            answers.pop_back();
            return answer;
        }
        const std::size_t count = m_bytes.copy(buffer, m_step);
        m_bytes.erase(0, count);
        return count == 0 ? -1 : static_cast<int>(count);
    }

    int write(const char* buffer, int size) override {
        writes.push_back(size);
        written.append(buffer, answers.empty() ? static_cast<std::size_t>(size) : 0);
        return answers.empty() ? size : answers.back();
    }

    std::vector<int> answers;  // the last one comes first
    std::string written;
    std::vector<int> writes;

private:
    std::string m_bytes;
    std::size_t m_step;
};

TEST(ZRCustomStream, ReadsWhatItsControllerGivesAndPutsTenBytesBack) {
    const std::string bytes = noise(20000);
    for (const std::size_t step : {1U, 7U, 5000U, 8192U}) {
        Controller controller(bytes, step);
        ZRCustomStream stream(&controller);
        EXPECT_TRUE(stream.is_open());
        EXPECT_EQ(readsTwice(stream, bytes), bytes.size()) << "by " << step;
        EXPECT_EQ(stream.get(), EOF);
        stream.clear();
        EXPECT_TRUE(stream.unget()) << "also at the end";
        EXPECT_EQ(stream.get(), bytes.back());
    }
}

// On purpose: only a negative number ends the data.
TEST(ZRCustomStream, NothingReadYetDoesNotEndTheStream) {
    Controller controller("abc");
    controller.answers = {0, 0};
    ZRCustomStream stream(&controller);
    EXPECT_EQ(stream.get(), '\0') << "what lies in the buffer, which begins with noughts";
    EXPECT_EQ(stream.get(), '\0');
    EXPECT_EQ(restOf(stream), "abc");

    Controller silent;
    silent.answers.assign(5, 0);
    ZRCustomStream other(&silent);
    std::string bytes(4, 'x');
    EXPECT_TRUE(other.read(bytes.data(), 4)) << "and does not go on for ever either";
    EXPECT_EQ(bytes, std::string(4, '\0'));
}

TEST(ZRCustomStream, AnswersThatCannotBeStayWithinTheBuffer) {
    for (const int answer : {8193, INT_MAX, -1, INT_MIN}) {
        Controller controller;
        controller.answers = {answer};
        ZRCustomStream stream(&controller);
        EXPECT_EQ(restOf(stream).size(), answer < 0 ? 0U : 8192U) << answer;
    }
}

TEST(ZRCustomStream, WritesWhenTheBufferIsFullAndAtTheEnd) {
    const std::string bytes = noise(8203);
    Controller controller;
    {
        ZRCustomStream stream(&controller);
        stream.write(bytes.data(), 8201).flush();
        EXPECT_TRUE(controller.writes.empty()) << "a flush does nothing";
        EXPECT_EQ(stream.tellp(), 8201);
        stream.put(bytes[8201]);
        EXPECT_EQ(controller.writes, std::vector<int>{8202});
        stream.put(bytes[8202]);
        EXPECT_EQ(stream.tellp(), 8203);
    }
    EXPECT_EQ(controller.writes, (std::vector<int>{8202, 1}));
    EXPECT_EQ(controller.written, bytes);
}

// On purpose: a seek by an offset is taken for a question about the position.
TEST(ZRCustomStream, SeekingByAnOffsetSeemsToSucceed) {
    Controller controller;
    ZRCustomStream stream(&controller);
    stream << "abc";
    EXPECT_TRUE(stream.seekp(-100, std::ios::end));
    EXPECT_EQ(stream.tellp(), 3);
    EXPECT_FALSE(stream.seekp(1)) << "to a position it fails";
}

TEST(ZRCustomStream, AFailedWriteIsTriedAgain) {
    Controller controller;
    controller.answers = {8201};
    const std::string bytes = noise(9000);
    {
        ZRCustomStream stream(&controller);
        EXPECT_FALSE(stream.write(bytes.data(), 8300));
        stream.clear();
        EXPECT_FALSE(stream.write(bytes.data() + 8202, 9000 - 8202));
        controller.answers.clear();
        stream.clear();
        EXPECT_TRUE(stream.write(bytes.data() + 8202, 9000 - 8202));
        EXPECT_EQ(stream.tellp(), 9000);
    }
    EXPECT_EQ(controller.written, bytes);
    Controller broken;
    broken.answers = {-1};
    ZRCustomStream(&broken) << "lost without a word";
    EXPECT_EQ(broken.writes.size(), 1U);
}

TEST(ZRCustomStream, IsNotOpenWithoutAController) {
    ZRCustomStream stream(nullptr);
    EXPECT_FALSE(stream.is_open());
    EXPECT_EQ(stream.get(), EOF);
    stream.clear();
    EXPECT_FALSE(stream << "x");
}

}  // namespace
}  // namespace ZroCommon::testing
