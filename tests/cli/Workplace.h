#pragma once

#include <cstdlib>
#include <ostream>
#include <span>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "tests/support/TempFolder.h"

namespace ZroCommon::testing {

/// What a command line did.
struct Outcome {
    int status = -1;
    std::string out;
    std::string err;
};

inline std::ostream& operator<<(std::ostream& stream, const Outcome& outcome) {
    return stream << "status " << outcome.status << "\n--- out\n"
                  << outcome.out << "--- err\n"
                  << outcome.err;
}

/// A folder with files, and a shell in it that knows `zro`, the program as it was built.
class Workplace {
public:
    void write(std::string_view name, std::string_view bytes) const { m_folder.write(name, bytes); }
    std::string read(std::string_view name) const { return m_folder.read(name); }
    const std::string& path() const { return m_folder.path(); }

    Outcome run(const std::string& commandLine) const {
        m_folder.write(".script", "cd '" + path()
                                      + "' || exit 99\n"
                                        "zro() { '" ZRO_PROGRAM "' \"$@\"; }\n"
                                      + commandLine + "\n");
        const std::string script = path() + "/.script";
        const int status = std::system(
            ("bash " + script + " >" + path() + "/.out 2>" + path() + "/.err </dev/null").c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : 256 + status, read(".out"), read(".err")};
    }

private:
    TempFolder m_folder;
};

/// A command of `zro` that succeeds, and what it prints.
struct CommandOutput {
    const char* command;
    const char* out;
};

inline void expectOutputs(const Workplace& place, std::span<const CommandOutput> rows) {
    for (const auto& [command, out] : rows) {
        const Outcome outcome = place.run(std::string("zro ") + command);
        EXPECT_EQ(outcome.out, out) << "for: " << command;
        EXPECT_EQ(outcome.status, 0) << "for: " << command << "\n" << outcome;
    }
}

}  // namespace ZroCommon::testing
