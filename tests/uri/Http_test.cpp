// Opening addresses, against servers of the test's own.
#include "zro/platform/http/internal/Http.h"

#include <atomic>
#include <chrono>
#include <csignal>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "tests/support/HttpServer.h"
#include "tests/support/Skips.h"
#include "tests/support/TempFolder.h"
#include "tests/support/Test.h"
#include "tests/support/Threads.h"
#include "tests/uri/Fetching.h"
#include "zro/foundation/ZRResourceLimits.h"
#include "zro/platform/http/internal/HttpUrl.h"

namespace ZroCommon::testing {
namespace {

using namespace std::chrono_literals;

std::string answer(const std::string& status, const std::string& headers, const std::string& body) {
    return "HTTP/1.1 " + status + "\r\nConnection: close\r\n" + headers + "\r\n" + body;
}

std::string good(const std::string& headers, const std::string& body) {
    return answer("200 OK", headers, body);
}

/// What opening an address gave: "type|content", or the error text.
std::string outcomeOf(const std::string& address) {
    UnicodeString type(u"as it was");
    UnicodeString error(u"as it was");
    const std::unique_ptr<std::istream> stream(uri(text(address)).getStream(&type, &error));
    EXPECT_EQ(stream ? error : type, stream ? u"" : u"as it was") << "for: " << address;
    return stream ? utf8(type) + "|" + restOf(*stream) : utf8(error);
}

std::unique_ptr<std::istream> open(const std::string& address) {
    return std::unique_ptr<std::istream>(uri(text(address)).getStream(nullptr));
}

/// A server that answers each path with one text.
HttpServer serverOf(const std::string& bytes) {
    return HttpServer(
        [bytes](HttpConnection& connection, const std::string&) { connection.send(bytes); });
}

TEST(Http, AnswersBecomeAStreamOrAText) {
    const std::string xml = "Content-Type: text/xml; charset=utf-8\r\n";
    const std::string chunked = "Transfer-Encoding: chunked\r\n";
    const auto served = [](const std::string& bytes) {
        const HttpServer server = serverOf(bytes);
        return outcomeOf(server.url("/a"));
    };
    expectRows<std::string, std::string>(
        served,
        {
            {good(xml, "<a/>"), "text/xml|<a/>"},
            {good("", "x"), "|x"},
            {good("CONTENT-type:  a/b ;c \t\r\n", "x"), "a/b|x"},
            {good("Content-Type: " + std::string(255, 'a') + "\r\n", ""),
             std::string(255, 'a') + "|"},
            {good("Content-Type: " + std::string(256, 'a') + "\r\n", ""), "|"},
            {answer("204 No Content", "", ""), "|"},
            {answer("299 Fine", "", "x"), "|x"},
            {answer("404 Not Found", xml, "sorry"), "HTTP status is 404"},
            {answer("500 Oops", "", ""), "HTTP status is 500"},
            {answer("301 Moved", "", ""), "HTTP status is 301"},
            {answer("302 Found", "Location: \r\n", ""), "HTTP status is 302"},
            {answer("304 Same", "Location: /end\r\n", ""), "HTTP status is 304"},
            {good("HTTP/x: y\r\n" + chunked, "1\r\na\r\n0\r\nHTTP/1.1 500 x: y\r\n\r\n"), "|a"},
            {"HTTP/1.1 100 Continue\r\n\r\n" + good("", "x"), "|x"},
            {good(chunked, "1\r\na\r\n2\r\nbc\r\n0\r\nLocation: /x\r\n\r\n"), "|abc"},
            {good(chunked, "1\r\na\r\nzz\r\n"), "|a"},
            {good("Content-Encoding: gzip\r\n", "\x1F\x8B"), "|\x1F\x8B"},  // not asked for
            {good("Content-Length: 2\r\n", "abc"), "|ab"},
            {"<html/>", "Cannot open URL: 2F78"},
            {"", "Cannot open URL: 2EFE"},
            {answer("302 Found", "Location: /again\r\n", ""), "Cannot open URL: 2F7C"},
        });
}

TEST(Http, TellsWhatAProxyDoesNotLetThrough) {
    const std::string before = getenv("https_proxy");
    for (const auto& [bytes, error] : {std::pair("HTTP/1.1 403 No\r\n\r\n", "2EFE"),
                                       std::pair("HTTP/1.1 200 Yes\r\n\r\n", "2F7D")}) {
        const HttpServer proxy = serverOf(bytes);
        setenv("https_proxy", proxy.url("").c_str(), 1);
        EXPECT_EQ(outcomeOf("https://other.invalid/"), std::string("Cannot open URL: ") + error);
    }
    setenv("https_proxy", before.c_str(), 1);
}

TEST(Http, FollowsRedirects) {
    const HttpServer server([](HttpConnection& connection, const std::string& path) {
        const std::string on = "Content-Type: text/html\r\nLocation: d/end\r\n";
        connection.send(path == "/d/end" ? good("", "end")
                                         : answer(path.substr(1) + " Moved", on, "on"));
    });
    for (const char* status : {"/301", "/302", "/303", "/307", "/308"}) {
        EXPECT_EQ(outcomeOf(server.url(status)), "|end") << status << ", and its type";
        EXPECT_EQ(server.requests().back().substr(0, 4), "GET ") << status;
    }
}

TEST(Http, SaysWhoAsksAndThatNothingKeptWillDo) {
    const HttpServer server = serverOf(good("", ""));
    outcomeOf(server.url("/a b?\"x\"#fragment"));
    const std::string request = server.requests().at(0);
    EXPECT_EQ(request.substr(0, request.find("\r\n")), "GET /a%20b?%22x%22 HTTP/1.1");
    for (const char* line : {"User-Agent: Quorrel V4.3 MR2c for Windows (x64) (4,3,2008,0805)",
                             "Accept: */*", "Cache-Control: no-cache", "Pragma: no-cache"}) {
        EXPECT_NE(request.find(std::string("\r\n") + line + "\r\n"), std::string::npos) << line;
    }
    EXPECT_EQ(request.find("Accept-Encoding"), std::string::npos);
}

TEST(Http, UrlsGoOutWithoutWhatNoRequestLineMayHave) {
    const auto url = [](const std::string& given) {
        return internal::httpUrlOf(text(given)).value_or("none");
    };
    expectTexts(url, {"http://h/a%20b%zz -> http://h/a%20b%zz",
                      "HTTPS://h/\u00E9\U0001F600 -> HTTPS://h/%C3%A9%F0%9F%98%80",
                      "http://h/a\r\nX: y -> http://h/a%0D%0AX:%20y",
                      "http://h/{|}^`\\<>\"~! -> http://h/%7B%7C%7D%5E%60%5C%3C%3E%22~!",
                      "http://h/\x7F#f#g -> http://h/%7F", "ftp://h/ -> none", "mailto:a@b -> none",
                      "httpx://h/ -> none", "http -> none", " -> none"});
}

// Of a server that is gone.
std::string unusedAddress() {
    return serverOf("").url("/").substr(7);
}

TEST(Http, NamesTheFailureByItsNumber) {
    const HttpServer plain = serverOf(good("", ""));
    expectRows<std::string, const char*>(
        outcomeOf, {{"http://" + unusedAddress(), "Cannot open URL: 2EFD"},
                    {"https" + plain.url("/").substr(4), "Cannot open URL: 2F7D"},
                    {"http://127.0.0.1:99999999/", "Cannot open URL: 2EE5"},
                    {"mailto:a@b", "Cannot open URL: 2EE6"}});
}

// Neither does the client's own support of other schemes come into play.
TEST(Http, NoOtherSchemeIsAskedFor) {
    std::string scheme;
    const HttpServer server([&scheme](HttpConnection& connection, const std::string&) {
        connection.send(
            answer("302 Found", "Location: " + scheme + "://127.0.0.1/etc/hosts\r\n", ""));
    });
    for (const char* other : {"dict", "file", "ftp", "ftps", "gopher", "imap", "ldap", "mqtt",
                              "rtsp", "scp", "smb", "telnet", "tftp", "ws"}) {
        scheme = other;
        EXPECT_EQ(outcomeOf(server.url("/")), "Cannot open URL: 2EE6") << "on to " << scheme;
        if (scheme != "file") {
            EXPECT_EQ(outcomeOf(scheme + "://127.0.0.1/etc/hosts"), "Cannot open URL: 2EE6")
                << scheme;
        }
    }
}

TEST(Http, WaitsForWhatIsSlow) {
    const HttpServer server([](HttpConnection& connection, const std::string&) {
        for (const char byte : good("Content-Length: 3\r\n", "abc")) {
            connection.send({&byte, 1});
            std::this_thread::sleep_for(byte == '\n' || byte == 'a' ? 60ms : 1ms);
        }
    });
    EXPECT_EQ(outcomeOf(server.url("/")), "|abc");
}

TEST(Http, PutsBackUpToSixteenBytesBehindARefill) {
    const HttpServer server = serverOf(good("", std::string(65536, 'a') + "0123456789"));
    const auto stream = open(server.url("/"));
    ASSERT_NE(stream, nullptr);
    do {
        stream->get();
    } while (stream->rdbuf()->in_avail() > 0);
    stream->get();
    int room = 0;
    while (stream->unget()) {
        ++room;
    }
    EXPECT_EQ(room, 17) << "the byte read, and sixteen";
    stream->clear();
    EXPECT_TRUE(restOf(*stream).ends_with("aaaaaaa0123456789"));
}

TEST(Http, TakesTheBodyAsItIsRead) {
    constexpr std::size_t kSize = 100'000'000;
    std::atomic<std::size_t> sent{0};
    const HttpServer server([&](HttpConnection& connection, const std::string&) {
        connection.send(good("Content-Length: 100000000\r\n", ""));
        const std::string block(1'000'000, 'x');
        while (sent < kSize && connection.send(block)) {
            sent += block.size();
        }
    });
    const auto stream = open(server.url("/"));
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(stream->get(), 'x');
    std::this_thread::sleep_for(300ms);
    EXPECT_LT(sent, kSize / 4) << "the rest waits for its reader";
    EXPECT_EQ(stream->ignore(kSize).gcount(), kSize - 1);
}

TEST(Http, LostConnectionIsTheEnd) {
    const HttpServer server([](HttpConnection& connection, const std::string&) {
        connection.send(good("Content-Length: 1000000\r\n", std::string(1000, 'x')));
        std::this_thread::sleep_for(100ms);
        connection.reset();
    });
    EXPECT_EQ(outcomeOf(server.url("/")).substr(0, 4), "|xxx");
}

TEST(Http, AConnectionMayBeLostAtAnyByte) {
    const std::string body(700, 'x');
    const std::string whole = good("Content-Type: a/b\r\nContent-Length: 700\r\n", body);
    const std::size_t header = whole.size() - body.size();
    const HttpServer server([&](HttpConnection& connection, const std::string& path) {
        connection.send(std::string_view(whole).substr(0, std::stoul(path.substr(1))));
    });
    for (std::size_t at = 0; at <= whole.size(); at += at < header + 5 ? 1U : 29U) {
        const std::string outcome = outcomeOf(server.url("/" + std::to_string(at)));
        if (at >= header) {
            EXPECT_EQ(outcome, "a/b|" + body.substr(0, at - header)) << at;
        } else {
            EXPECT_EQ(outcome.substr(0, 17), "Cannot open URL: ") << at;
        }
    }
}

TEST(HttpThreads, FetchAtTheSameTimeAndCloseEarly) {
    const HttpServer server([](HttpConnection& connection, const std::string& path) {
        connection.send(good("", path == "/long" ? std::string(10'000'000, 'x') : path));
    });
    inThreads(8, [&server](int i) {
        EXPECT_NE(open(server.url("/long")), nullptr);
        const std::string path = "/" + std::to_string(i);
        EXPECT_EQ(outcomeOf(server.url(path)), "|" + path);
    });
}

// Limits of the caller, against a server that sends ten bytes and then one every 50 ms without end;
// or nothing at all.
class HttpLimits : public ::testing::Test {
protected:
    ~HttpLimits() override { ZRResourceLimits::setCurrent({}); }

    std::string fetch(const ZRResourceLimits& limits, const std::string& path = "/drip") const {
        ZRResourceLimits::setCurrent(limits);
        return outcomeOf(m_server.url(path));
    }

private:
    HttpServer m_server{[](HttpConnection& connection, const std::string& path) {
        const auto start = std::chrono::steady_clock::now();
        bool goes = path != "/silence" && connection.send(good("", "0123456789"));
        while (std::chrono::steady_clock::now() - start < 2200ms && (goes || path == "/silence")) {
            std::this_thread::sleep_for(50ms);
            goes = goes && connection.send("x");
        }
    }};
};

TEST_F(HttpLimits, EndAnAnswerThatIsTooLongOrTakesTooLong) {
    ZRResourceLimits limits;
    limits.fetchedBytes = 15;
    EXPECT_LE(fetch(limits).size(), 16U);
    limits = {};
    limits.fetchSeconds = 1;
    const std::string second = fetch(limits);
    EXPECT_TRUE(second.starts_with("|0123456789x") && second.size() < 50) << second;
    limits = {};
    limits.idleSeconds = 1;
    EXPECT_EQ(fetch(limits, "/silence"), "Cannot open URL: 2EE2");
}

TEST_F(HttpLimits, EndWaitingWhenCancelled) {
    std::atomic<bool> cancel{false};
    ZRResourceLimits limits;
    limits.cancelFlag = &cancel;
    std::thread later([&cancel] {
        std::this_thread::sleep_for(300ms);
        cancel = true;
    });
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(fetch(limits).starts_with("|0123456789"));
    EXPECT_EQ(fetch(limits, "/silence"), "Cannot open URL: 2EE4");
    EXPECT_LT(std::chrono::steady_clock::now() - start, 3s);
    later.join();
}

pid_t start(const std::string& command) {
    const char* const arguments[] = {"sh", "-c", command.c_str(), nullptr};
    pid_t pid = 0;
    posix_spawnp(&pid, "sh", nullptr, nullptr, const_cast<char* const*>(arguments), environ);
    return pid;
}

int statusOf(pid_t process) {
    int status = -1;
    waitpid(process, &status, 0);
    return status;
}

// With a certificate of the test's own, served by the openssl program.
TEST(Https, OpensWhatHasATrustedCertificate) {
    const TempFolder folder;
    const std::string go = "cd " + folder.path() + " && exec openssl ";
    if (statusOf(start(go
                       + "req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -days 2 "
                         "-subj /CN=127.0.0.1 -addext subjectAltName=IP:127.0.0.1 "
                         "-keyout key -out certificate 2>/dev/null"))
        != 0) {
        GTEST_SKIP() << missing("a program openssl that makes certificates",
                                "the Debian package openssl has it");
    }
    folder.write("a.xml", "HTTP/1.0 200 OK\r\nContent-Type: text/xml\r\n\r\n<a/>");
    const std::string address = unusedAddress();
    const pid_t server = start(go + "s_server -quiet -cert certificate -key key -HTTP -accept "
                               + address.substr(0, address.size() - 1));
    const std::string url = "https://" + address + "a.xml";
    std::string outcome = outcomeOf(url);
    for (int i = 0; i < 200 && outcome == "Cannot open URL: 2EFD"; ++i) {  // nobody listens yet
        std::this_thread::sleep_for(50ms);
        outcome = outcomeOf(url);
    }
    EXPECT_EQ(outcome, "Cannot open URL: 2F8F") << "nobody has signed it";
    internal::setHttpCertificates(folder.path() + "/certificate");
    EXPECT_EQ(outcomeOf(url), "text/xml|<a/>");
    internal::setHttpCertificates("");
    kill(server, SIGKILL);
    statusOf(server);
}

}  // namespace
}  // namespace ZroCommon::testing
