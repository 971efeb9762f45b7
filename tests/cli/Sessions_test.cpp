// Sessions with the program. Each file of tests/cli/sessions is one: behind "  $ " stands a
// command, behind "  > " its further lines, and then what it prints, with "! " before each line on
// standard error and the exit status in brackets where it is not 0; all else is prose. Every
// command must answer again as the file says. With ZRO_WRITE_SESSIONS in the environment the files
// are written.
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/cli/Samples.h"
#include "tests/support/HttpServer.h"

namespace ZroCommon::testing {
namespace {

/// Some lines of a session: prose, or a command and what it printed.
struct Passage {
    std::string text;
    std::string command = {};
};

std::vector<Passage> passagesOf(const std::string& session) {
    std::vector<Passage> passages;
    bool isAnswer = false;
    std::istringstream lines(session);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("  $ ")) {
            passages.push_back({line + "\n", line.substr(4)});
        } else if (line.starts_with("  > ") && !isAnswer) {
            passages.back().text += line + "\n";
            passages.back().command += "\n" + line.substr(4);
        } else if (!line.starts_with("  ")) {
            passages.push_back({line + "\n"});
        }
        isAnswer = line.starts_with("  ") && !line.starts_with("  $ ") && !line.starts_with("  > ");
    }
    return passages;
}

void replace(std::string& text, const std::string& what, const char* by) {
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at)) {
        text.replace(at, what.size(), by);
    }
}

std::string marked(const std::string& text, const char* mark) {
    std::string all;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        all += mark + line + (lines.eof() ? " (no line end)\n" : "\n");
    }
    return all;
}

/// The session as it goes today, all commands in one shell.
std::string replayed(const std::string& session) {
    const HttpServer server([](HttpConnection& connection, const std::string& path) {
        connection.send("HTTP/1.1 " + path.substr(1) + " x\r\nConnection: close\r\n\r\nbody");
    });
    const Workplace place;
    writePackages(place);
    writeOfficePackages(place);
    writeCompoundFiles(place);
    writeProperties(place);
    const std::vector<Passage> passages = passagesOf(session);
    std::string script = "mkdir .answer; URL=" + server.url("") + "\n";
    for (std::size_t i = 0; i < passages.size(); ++i) {
        const std::string file = ".answer/" + std::to_string(i);
        script += "{ " + (passages[i].command.empty() ? ":" : passages[i].command) + "\n} >" + file
                  + ".out 2>" + file + ".err; echo $? >" + file + ".status\n";
    }
    place.run(script);
    std::string result;
    for (std::size_t i = 0; i < passages.size(); ++i) {
        const std::string file = ".answer/" + std::to_string(i);
        const std::string status = place.read(file + ".status");
        result += passages[i].text + marked(place.read(file + ".out"), "  ")
                  + marked(place.read(file + ".err"), "  ! ")
                  + (status == "0\n" ? "" : "  [" + status.substr(0, status.find('\n')) + "]\n");
    }
    replace(result, place.path(), "$PWD");
    replace(result, server.url(""), "$URL");
    return result;
}

class Session : public ::testing::TestWithParam<std::string> {};

TEST_P(Session, GoesAsItIsTold) {
    const std::string path = ZRO_SESSIONS "/" + GetParam() + ".txt";
    std::ifstream in(path);
    const std::string told{std::istreambuf_iterator<char>(in), {}};
    const std::string today = replayed(told);
    EXPECT_EQ(today, told);
    if (std::getenv("ZRO_WRITE_SESSIONS") != nullptr) {
        std::ofstream(path) << today;
    }
}

std::vector<std::string> sessions() {
    std::vector<std::string> names;
    for (const auto& file : std::filesystem::directory_iterator(ZRO_SESSIONS)) {
        names.push_back(file.path().stem().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

INSTANTIATE_TEST_SUITE_P(Sessions, Session, ::testing::ValuesIn(sessions()),
                         [](const auto& session) { return session.param; });

}  // namespace
}  // namespace ZroCommon::testing
