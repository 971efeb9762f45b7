// Opening addresses, against a server of the test's own.
#include <chrono>
#include <istream>
#include <memory>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "tests/support/HttpServer.h"
#include "tests/support/Text.h"
#include "zro/platform/http/internal/HttpUrl.h"
#include "zro/uri/ZRUri.h"

namespace ZroCommon::testing {
namespace {

std::string answer(const std::string& status, const std::string& headers, const std::string& body) {
    return "HTTP/1.1 " + status + "\r\nConnection: close\r\n" + headers + "\r\n" + body;
}

/// What opening an address gave: "type|content", or the error text.
std::string outcomeOf(const std::string& address) {
    UnicodeString type(u"as it was");
    UnicodeString error(u"as it was");
    const std::unique_ptr<std::istream> stream(
        ZRUri(text(address), URISTR_PATH_OR_URI_CSS).getStream(&type, &error));
    if (stream == nullptr) {
        EXPECT_EQ(type, u"as it was") << "for: " << address;
        return utf8(error);
    }
    EXPECT_EQ(error, u"") << "for: " << address;
    return utf8(type) + "|" + std::string(std::istreambuf_iterator<char>(*stream), {});
}

std::unique_ptr<std::istream> open(const std::string& address) {
    return std::unique_ptr<std::istream>(ZRUri(text(address), URISTR_GUESS).getStream(nullptr));
}

/// A server that answers each path with one text.
HttpServer serverOf(const std::string& bytes) {
    return HttpServer(
        [bytes](HttpConnection& connection, const std::string&) { connection.send(bytes); });
}

TEST(Http, AnswersBecomeAStreamOrAText) {
    const std::string xml = "Content-Type: text/xml; charset=utf-8\r\n";
    const struct {
        const char* what;
        std::string bytes;
        std::string outcome;
    } cases[] = {
        {"whole", answer("200 OK", xml, "<a/>"), "text/xml|<a/>"},
        {"no type", answer("200 OK", "", "x"), "|x"},
        {"a type of blanks around", answer("200 OK", "Content-Type:  a/b ;c\r\n", "x"), "a/b|x"},
        {"longest type", answer("200 OK", "Content-Type: " + std::string(255, 'a') + "\r\n", ""),
         std::string(255, 'a') + "|"},
        {"too long a type", answer("200 OK", "Content-Type: " + std::string(256, 'a') + "\r\n", ""),
         "|"},
        {"empty", answer("204 No Content", "", ""), "|"},
        {"last of the good", answer("299 Fine", "", "x"), "|x"},
        {"not found", answer("404 Not Found", xml, "sorry"), "HTTP status is 404"},
        {"server error", answer("500 Oops", "", ""), "HTTP status is 500"},
        {"redirect to nowhere", answer("301 Moved", "", ""), "HTTP status is 301"},
        {"to nobody knows where", answer("302 Found", "Location: \r\n", ""), "HTTP status is 302"},
        {"no redirect in spite of its place", answer("304 Same", "Location: /end\r\n", ""),
         "HTTP status is 304"},
        {"a line that begins like a status",
         answer("200 OK", "HTTP/x: y\r\nTransfer-Encoding: chunked\r\n",
                "1\r\na\r\n0\r\nHTTP/1.1 500 x: y\r\n\r\n"),
         "|a"},
        {"interim answer", "HTTP/1.1 100 Continue\r\n\r\n" + answer("200 OK", "", "x"), "|x"},
        {"chunked",
         answer("200 OK", "Transfer-Encoding: chunked\r\n",
                "1\r\na\r\n2\r\nbc\r\n0\r\nLocation: /x\r\n\r\n"),
         "|abc"},
        {"packed, and not asked for", answer("200 OK", "Content-Encoding: gzip\r\n", "\x1F\x8B"),
         "|\x1F\x8B"},
        {"shorter than told", answer("200 OK", "Content-Length: 9\r\n", "abc"), "|abc"},
        {"ended before its body", answer("200 OK", "Content-Length: 9\r\n", ""), "|"},
        {"longer than told", answer("200 OK", "Content-Length: 2\r\n", "abc"), "|ab"},
        {"a broken chunk", answer("200 OK", "Transfer-Encoding: chunked\r\n", "1\r\na\r\nzz\r\n"),
         "|a"},
        {"no header", "<html/>", "Cannot open URL: 2F78"},
        {"nothing", "", "Cannot open URL: 2EFE"},
        {"half a header", "HTTP/1.1 200 OK\r\nConte", "Cannot open URL: 2EFE"},
        {"half a header with a length", "HTTP/1.1 200 OK\r\nContent-Length: 3\r\nX: y",
         "Cannot open URL: 2EFE"},
        {"to another scheme", answer("302 Found", "Location: ftp://127.0.0.1/\r\n", ""),
         "Cannot open URL: 2EE6"},
        {"to a file", answer("302 Found", "Location: file:///etc/passwd\r\n", ""),
         "Cannot open URL: 2EE6"},
        {"round and round", answer("302 Found", "Location: /again\r\n", ""),
         "Cannot open URL: 2F7C"},
    };
    for (const auto& [what, bytes, outcome] : cases) {
        const HttpServer server = serverOf(bytes);
        EXPECT_EQ(outcomeOf(server.url("/a")), outcome) << what;
    }
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
        if (path == "/d/end") {
            connection.send(answer("200 OK", "Content-Type: a/b\r\n", "end"));
        } else {
            connection.send(answer(path.substr(1) + " Moved", "Location: d/end\r\n", "on"));
        }
    });
    for (const char* status : {"301", "302", "303", "307", "308"}) {
        EXPECT_EQ(outcomeOf(server.url(std::string("/") + status)), "a/b|end") << status;
        EXPECT_EQ(server.requests().back().substr(0, 4), "GET ") << status;
    }
}

TEST(Http, SaysWhoAsksAndThatNothingKeptWillDo) {
    const HttpServer server = serverOf(answer("200 OK", "", ""));
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
    const struct {
        UnicodeString uri;
        const char* url;  // null for a scheme that is not asked for
    } cases[] = {
        {u"http://h/a%20b%zz", "http://h/a%20b%zz"},
        {u"HTTPS://h/\u00E9\U0001F600", "HTTPS://h/%C3%A9%F0%9F%98%80"},
        {u"http://h/a\r\nX: y", "http://h/a%0D%0AX:%20y"},
        {u"http://h/{|}^`\\<>\"~!", "http://h/%7B%7C%7D%5E%60%5C%3C%3E%22~!"},
        {u"http://h/\u007F#f#g", "http://h/%7F"},
        {u"ftp://h/", nullptr},
        {u"mailto:a@b", nullptr},
        {u"httpx://h/", nullptr},
        {u"http", nullptr},
        {u"", nullptr},
    };
    for (const auto& [uri, url] : cases) {
        const auto made = internal::httpUrlOf(uri);
        EXPECT_EQ(made.value_or("none"), url != nullptr ? url : "none") << utf8(uri);
    }
}

TEST(Http, NamesTheFailureByItsNumber) {
    const int unused = [] {  // a port that was free a moment ago
        const HttpServer server = serverOf("");
        const std::string url = server.url("");
        return std::stoi(url.substr(url.rfind(':') + 1));
    }();
    const std::string nobody = "http://127.0.0.1:" + std::to_string(unused) + "/";
    const HttpServer plain = serverOf(answer("200 OK", "", ""));
    const std::string secure = "https" + plain.url("/").substr(4);
    const std::pair<std::string, const char*> cases[] = {
        {nobody, "Cannot open URL: 2EFD"},
        {secure, "Cannot open URL: 2F7D"},
        {"http://127.0.0.1:99999999/", "Cannot open URL: 2EE5"},
        {"mailto:a@b", "Cannot open URL: 2EE6"},
        {"data:,x", "Cannot open URL: 2EE6"},
    };
    for (const auto& [address, error] : cases) {
        EXPECT_EQ(outcomeOf(address), error) << address;
    }
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
    using namespace std::chrono_literals;
    const HttpServer server([](HttpConnection& connection, const std::string&) {
        const std::string bytes = answer("200 OK", "Content-Length: 3\r\n", "abc");
        for (const char byte : bytes) {
            connection.send({&byte, 1});
            std::this_thread::sleep_for(byte == '\n' || byte == 'a' ? 60ms : 1ms);
        }
    });
    EXPECT_EQ(outcomeOf(server.url("/")), "|abc");
}

TEST(Http, PutsBackUpToSixteenBytesBehindARefill) {
    const std::string body = std::string(65536, 'a') + "0123456789";
    const HttpServer server = serverOf(answer("200 OK", "", body));
    const auto stream = open(server.url("/"));
    ASSERT_NE(stream, nullptr);
    int room = 0;
    for (std::size_t at = 0; at < body.size(); ++at) {
        const bool isRefilled = stream->rdbuf()->in_avail() == 0 && at != 0;
        ASSERT_EQ(stream->get(), static_cast<unsigned char>(body[at]));
        if (isRefilled) {
            for (room = 0; stream->unget(); ++room) {
            }
            break;
        }
    }
    EXPECT_EQ(room, 17) << "the byte read, and sixteen";
}

TEST(Http, TakesTheBodyAsItIsRead) {
    constexpr std::size_t kSize = 100'000'000;
    std::atomic<std::size_t> sent{0};
    const HttpServer server([&](HttpConnection& connection, const std::string&) {
        connection.send(answer("200 OK", "Content-Length: 100000000\r\n", ""));
        const std::string block(1'000'000, 'x');
        while (sent < kSize && connection.send(block)) {
            sent += block.size();
        }
    });
    const auto stream = open(server.url("/"));
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(stream->get(), 'x');
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    EXPECT_LT(sent, kSize / 4) << "the rest waits for its reader";
    std::string block(1 << 20, '\0');
    std::size_t count = 1;
    while (stream->read(block.data(), static_cast<std::streamsize>(block.size()))
           || stream->gcount() > 0) {
        count += static_cast<std::size_t>(stream->gcount());
    }
    EXPECT_EQ(count, kSize);
}

TEST(Http, LostConnectionIsTheEnd) {
    const HttpServer server([](HttpConnection& connection, const std::string&) {
        connection.send(answer("200 OK", "Content-Length: 1000000\r\n", std::string(1000, 'x')));
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        connection.reset();
    });
    EXPECT_EQ(outcomeOf(server.url("/")).substr(0, 4), "|xxx");
}

TEST(Http, AConnectionMayBeLostAtAnyByte) {
    const std::string body(700, 'x');
    const std::string whole =
        answer("200 OK", "Content-Type: a/b\r\nContent-Length: 700\r\n", body);
    const std::size_t header = whole.size() - body.size();
    std::size_t at = 0;
    const HttpServer server([&](HttpConnection& connection, const std::string&) {
        connection.send(std::string_view(whole).substr(0, at));
    });
    for (at = 0; at <= whole.size(); at += at < header + 5 ? 1U : 29U) {
        const std::string outcome = outcomeOf(server.url("/"));
        if (at >= header) {
            EXPECT_EQ(outcome, "a/b|" + body.substr(0, at - header)) << at;
        } else {
            EXPECT_EQ(outcome.substr(0, 17), "Cannot open URL: ") << at;
        }
    }
}

TEST(Http, ClosingEarlyHarmsNobody) {
    const HttpServer server = serverOf(answer("200 OK", "", std::string(10'000'000, 'x')));
    for (int i = 0; i < 3; ++i) {
        const auto stream = open(server.url("/"));
        ASSERT_NE(stream, nullptr);
    }
}

TEST(HttpThreads, FetchAtTheSameTime) {
    const HttpServer server([](HttpConnection& connection, const std::string& path) {
        connection.send(answer("200 OK", "", path));
    });
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([&server, i] {
            const std::string path = "/" + std::to_string(i);
            EXPECT_EQ(outcomeOf(server.url(path)), "|" + path);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

}  // namespace
}  // namespace ZroCommon::testing
