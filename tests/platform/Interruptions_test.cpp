// Signals that interrupt system calls, and pipes that give and take a little at a time.
#include <algorithm>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

#include "tests/support/TempFolder.h"
#include "tests/support/Test.h"
#include "zro/platform/internal/NativeFile.h"
#include "zro/platform/internal/RawFile.h"
#include "zro/platform/internal/SigpipeGuard.h"

namespace ZroCommon::internal {
namespace {

// Twice, as the first may end a call that has done something.
void interrupt(pthread_t waiting) {
    for (int i = 0; i < 2; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        pthread_kill(waiting, SIGUSR1);
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

// Calls `pass(at, size)` for piece after piece, each time when the thread that waits for it in the
// system was interrupted.
template <class Pass>
void pieceByPiece(std::size_t total, pthread_t waiting, Pass pass) {
    constexpr std::size_t kPiece = 10000;
    for (std::size_t at = 0; at < total; at += kPiece) {
        interrupt(waiting);
        pass(at, std::min(kPiece, total - at));
    }
}

std::string squares(std::size_t count) {
    std::string bytes;
    for (std::size_t i = 0; i < count; ++i) {
        bytes += static_cast<char>(i * i / 7 % 251);
    }
    return bytes;
}

class Interrupted : public ::testing::Test {
protected:
    Interrupted() {
        struct sigaction action {};  // without SA_RESTART
        action.sa_handler = [](int /*signal*/) {
        };
        sigaction(SIGUSR1, &action, &m_before);
    }
    ~Interrupted() override { sigaction(SIGUSR1, &m_before, nullptr); }

    // What `read(name, into)` takes from a pipe that another thread opens late and fills slowly.
    template <class Read>
    std::string readSlowly(Read read) const {
        std::string into(m_bytes.size(), '\0');
        std::thread writer([this, reader = pthread_self()] {
            const SigpipeGuard guard;
            const int end = openToWrite(reader);
            pieceByPiece(m_bytes.size(), reader, [&](std::size_t at, std::size_t size) {
                EXPECT_EQ(write(end, m_bytes.data() + at, size), static_cast<ssize_t>(size));
            });
            close(end);
        });
        read(testing::text(m_fifo), into);
        writer.join();
        return into;
    }

private:
    // Late, and not at all when nobody reads.
    int openToWrite(pthread_t reader) const {
        int end = -1;
        for (int i = 0; end < 0 && i < 100; ++i) {
            interrupt(reader);
            end = open(m_fifo.c_str(), O_WRONLY | O_NONBLOCK);
        }
        EXPECT_EQ(fcntl(end, F_SETFL, 0), 0);
        return end;
    }

    struct sigaction m_before {};
    const testing::TempFolder m_folder;
    const std::string m_fifo = m_folder.path() + "/fifo";
    const int m_made = mkfifo(m_fifo.c_str(), 0600);

protected:
    const std::string m_bytes = squares(200000);
};

TEST_F(Interrupted, FilesAreOpenedAndReadToTheirEnd) {
    EXPECT_TRUE(readSlowly([](const UnicodeString& name, std::string& into) {
                    RawFile file = RawFile::open(name, false);
                    EXPECT_EQ(file.read(into.data(), into.size()), std::int64_t(into.size()));
                    file.close();
                })
                == m_bytes);
    EXPECT_TRUE(readSlowly([](const UnicodeString& name, std::string& into) {
                    const auto file = openInputFile(name);
                    ASSERT_NE(file, nullptr);
                    file->read(into.data(), std::streamsize(into.size()));
                })
                == m_bytes);
}

TEST_F(Interrupted, FilesAreWrittenWhole) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    std::string found(m_bytes.size(), '\0');
    std::thread reader([&, writer = pthread_self()] {
        pieceByPiece(found.size(), writer, [&](std::size_t at, std::size_t size) {
            EXPECT_EQ(RawFile(ends[0]).read(found.data() + at, size), std::int64_t(size));
        });
    });
    EXPECT_EQ(RawFile(ends[1]).write(m_bytes.data(), m_bytes.size()), std::int64_t(m_bytes.size()));
    close(ends[1]);
    reader.join();
    EXPECT_TRUE(found == m_bytes);
    close(ends[0]);
}

}  // namespace
}  // namespace ZroCommon::internal
