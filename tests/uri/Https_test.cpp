// HTTPS with a certificate of the test's own, served by the openssl program.
#include "zro/platform/http/internal/Http.h"

#include <arpa/inet.h>
#include <array>
#include <chrono>
#include <csignal>
#include <istream>
#include <memory>
#include <netinet/in.h>
#include <spawn.h>
#include <string>
#include <sys/socket.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/Skips.h"
#include "tests/support/TempFolder.h"
#include "zro/uri/ZRUri.h"

namespace ZroCommon::testing {
namespace {

/// A program that is ended, if it has not, when this object is.
class ChildProcess {
public:
    explicit ChildProcess(std::vector<std::string> words, const std::string& folder = "/") {
        std::vector<char*> arguments;
        for (std::string& word : words) {
            arguments.push_back(word.data());
        }
        arguments.push_back(nullptr);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
        if (posix_spawnp(&m_pid, arguments[0], &actions, nullptr, arguments.data(), environ) != 0) {
            m_pid = 0;
        }
        posix_spawn_file_actions_destroy(&actions);
    }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess() {
        if (m_pid != 0) {
            kill(m_pid, SIGKILL);
            wait();
        }
    }

    /// The exit status, or -1 when it did not run or was killed.
    int wait() {
        int status = 0;
        const bool ended = m_pid != 0 && waitpid(m_pid, &status, 0) == m_pid;
        m_pid = 0;
        return ended && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    pid_t m_pid = 0;
};

class Socket {
public:
    Socket() : m_socket(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        m_address.sin_family = AF_INET;
        m_address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    }
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;
    ~Socket() { close(m_socket); }

    /// A port that nobody had a moment ago.
    int freePort() {
        socklen_t size = sizeof(m_address);
        bind(m_socket, plain(), size);
        getsockname(m_socket, plain(), &size);
        return ntohs(m_address.sin_port);
    }
    bool connectTo(int port) {
        m_address.sin_port = htons(static_cast<std::uint16_t>(port));
        return connect(m_socket, plain(), sizeof(m_address)) == 0;
    }

private:
    sockaddr* plain() { return reinterpret_cast<sockaddr*>(&m_address); }

    int m_socket;
    sockaddr_in m_address{};
};

bool waitForServer(const std::string& authority) {
    const int port = std::stoi(authority.substr(authority.find(':') + 1));
    for (int tries = 0; tries < 200; ++tries) {
        if (Socket().connectTo(port)) {
            return true;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return false;
}

TEST(Https, OpensWhatHasATrustedCertificate) {
    const TempFolder folder;
    const std::string key = folder.path() + "/key.pem";
    const std::string certificate = folder.path() + "/certificate.pem";
    if (ChildProcess({"openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt",
                      "ec_paramgen_curve:P-256", "-nodes", "-days", "2", "-subj", "/CN=127.0.0.1",
                      "-addext", "subjectAltName=IP:127.0.0.1", "-keyout", key, "-out",
                      certificate})
            .wait()
        != 0) {
        GTEST_SKIP() << missing("a program openssl that makes certificates",
                                "the Debian package openssl has it");
    }
    folder.write("a.xml", "HTTP/1.0 200 OK\r\nContent-Type: text/xml\r\n\r\n<a/>");
    const std::string authority = "127.0.0.1:" + std::to_string(Socket().freePort());
    const ChildProcess server({"openssl", "s_server", "-quiet", "-accept", authority, "-cert",
                               certificate, "-key", key, "-HTTP"},
                              folder.path());
    ASSERT_TRUE(waitForServer(authority));

    const ZRUri uri(text("https://" + authority + "/a.xml"), URISTR_GUESS);
    UnicodeString type;
    UnicodeString error;
    EXPECT_EQ(uri.getStream(&type, &error), nullptr);
    EXPECT_EQ(utf8(error), "Cannot open URL: 2F8F") << "nobody has signed it";

    internal::setHttpCertificates(certificate);
    const std::unique_ptr<std::istream> stream(uri.getStream(&type, &error));
    internal::setHttpCertificates("");
    ASSERT_NE(stream, nullptr) << utf8(error);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(*stream), {}), "<a/>");
    EXPECT_EQ(utf8(type), "text/xml");
}

}  // namespace
}  // namespace ZroCommon::testing
