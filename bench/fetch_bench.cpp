// Opening by URI: 100 MB over HTTP from a server on this machine, next to the program curl, and a
// small file by its URI, next to std::ifstream.

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <spawn.h>
#include <stdexcept>
#include <string>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "tests/support/HttpServer.h"
#include "zro/uri/ZRUri.h"

#include "bench/support/Memory.h"
#include "bench/support/Options.h"
#include "bench/support/Record.h"
#include "bench/support/Timing.h"

namespace ZroCommon::bench {
namespace {

constexpr std::size_t kBody = 100'000'000;
constexpr std::size_t kPiece = 65536;  // what each contender reads at once
constexpr int kOpenings = 1000;        // a round

/// A process that serves the body, and ends with this one.
class ServerProcess {
public:
    ServerProcess() {
        std::array<int, 2> channel{};
        if (pipe(channel.data()) != 0 || (m_process = fork()) < 0) {
            throw std::runtime_error("cannot start a server");
        }
        if (m_process == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            serve(channel[1]);
        }
        close(channel[1]);
        std::array<char, 64> url{};
        const ssize_t length = read(channel[0], url.data(), url.size());
        close(channel[0]);
        m_url.assign(url.data(), static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
    }
    ServerProcess(const ServerProcess&) = delete;
    ServerProcess& operator=(const ServerProcess&) = delete;
    ~ServerProcess() {
        kill(m_process, SIGKILL);
        waitpid(m_process, nullptr, 0);
    }

    const std::string& url() const { return m_url; }

private:
    [[noreturn]] static void serve(int channel) {
        const std::string block(1 << 20, 'x');
        const testing::HttpServer server([&block](testing::HttpConnection& connection,
                                                  const std::string&) {
            std::size_t left = kBody;
            bool goes = connection.send("HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Length: "
                                        + std::to_string(left) + "\r\n\r\n");
            for (; goes && left != 0; left -= std::min(left, block.size())) {
                goes = connection.send(std::string_view(block).substr(0, left));
            }
        });
        const std::string url = server.url("/body");
        if (write(channel, url.data(), url.size()) < 0) {
            std::_Exit(1);
        }
        for (;;) {
            pause();
        }
    }

    pid_t m_process = -1;
    std::string m_url;
};

std::size_t readAll(std::istream& stream) {
    std::array<char, kPiece> piece;  // NOLINT(cppcoreguidelines-pro-type-member-init): read into
    std::size_t count = 0;
    while (stream.read(piece.data(), piece.size()) || stream.gcount() > 0) {
        count += static_cast<std::size_t>(stream.gcount());
    }
    return count;
}

void fetchWithZro(const std::string& url) {
    const ZRUri uri(UnicodeString::fromUTF8(url), URISTR_PATH_OR_URI_CSS);
    const std::unique_ptr<std::istream> stream(uri.getStream(nullptr));
    if (stream == nullptr || readAll(*stream) != kBody) {
        throw std::runtime_error("the body is not whole");
    }
}

/// Runs a program. \return its status; not 0 also when there is no such program
int statusOf(std::vector<std::string> words) {
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    pid_t process = 0;
    int status = 1;
    if (posix_spawnp(&process, "curl", nullptr, nullptr, arguments.data(), environ) != 0
        || waitpid(process, &status, 0) != process) {
        return -1;
    }
    return status;
}

// Asked for something that needs no network.
bool hasCurl() {
    return statusOf({"curl", "--silent", "--output", "/dev/null", "file:///dev/null"}) == 0;
}

void fetchWithCurl(const std::string& url) {
    if (statusOf({"curl", "--silent", "--output", "/dev/null", url}) != 0) {
        throw std::runtime_error("curl has failed");
    }
}

// By the clock on the wall: much of the work is the system's, and one of the contenders another
// process, whose start counts.
void measureHttp(const Options& options) {
    setenv("no_proxy", "127.0.0.1", 1);  // both ask the environment
    const ServerProcess server;
    const auto job = [&server](void (*fetch)(const std::string&)) {
        return [&server, fetch] {
            return timed(wallNow, [&] { fetch(server.url()); });
        };
    };
    std::vector<std::function<double()>> jobs = {job(fetchWithZro)};
    std::vector<const char*> names = {"zro"};
    if (hasCurl()) {
        jobs.emplace_back(job(fetchWithCurl));
        names.push_back("curl");
    }
    const std::vector<Spread> times = interleave(jobs, options.rounds);
    resetPeakResident();
    const double before = peakResident();
    fetchWithZro(server.url());
    const double grown = peakResident() - before;
    for (std::size_t index = 0; index < names.size(); ++index) {
        Record record("http", "100 MB", names[index]);
        record.set("bytes", static_cast<double>(kBody)).setSpread(times[index]);
        if (index == 0) {
            record.set("grown", grown);
        }
    }
}

/// A small file of its own.
class SmallFile {
public:
    SmallFile() {
        const int file = mkstemp(m_path.data());
        if (file < 0 || write(file, "content", 7) != 7) {
            throw std::runtime_error("cannot make a file");
        }
        close(file);
    }
    SmallFile(const SmallFile&) = delete;
    SmallFile& operator=(const SmallFile&) = delete;
    ~SmallFile() { std::remove(m_path.c_str()); }

    const std::string& path() const { return m_path; }

private:
    std::string m_path = "/tmp/zro-bench-XXXXXX";
};

void openWithZro(const std::string& path) {
    const ZRUri uri(UnicodeString::fromUTF8("file://" + path), URISTR_PATH_OR_URI_CSS);
    const std::unique_ptr<std::istream> stream(uri.getStream(nullptr));
    keep(stream->get());
}

void openWithIfstream(const std::string& path) {
    std::ifstream stream(path, std::ios::in | std::ios::binary);
    keep(stream.get());
}

using Open = void (*)(const std::string&);

double openingTime(Open open, const std::string& path) {
    const auto openAll = [open, &path] {
        for (int i = 0; i < kOpenings; ++i) {
            open(path);
        }
    };
    return timed(cpuNow, openAll) / kOpenings;
}

void measureOpening(const Options& options) {
    const SmallFile file;
    const std::vector<Spread> times =
        interleave({[&file] { return openingTime(openWithZro, file.path()); },
                    [&file] {
                        return openingTime(openWithIfstream, file.path());
                    }},
                   options.rounds);
    Record("open", "file", "zro").setSpread(times[0]);
    Record("open", "file", "ifstream").setSpread(times[1]);
}

void run(const Options& options) {
    measureHttp(options);
    measureOpening(options);
}

}  // namespace
}  // namespace ZroCommon::bench

int main(int argc, char** argv) {
    return ZroCommon::bench::runProgram(argc, argv, ZroCommon::bench::run);
}
