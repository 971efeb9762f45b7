#pragma once

#include <cstdlib>
#include <ostream>
#include <string>
#include <string_view>

#include "tests/support/TempFolder.h"

namespace ZroCommon::testing {

/// What a command line did.
struct Outcome {
    int status = -1;
    std::string out;
    std::string err;
};

/// A folder with files, and a shell in it that knows `zro`, the program as it was built.
class Workplace {
public:
    void write(std::string_view name, std::string_view bytes) const { m_folder.write(name, bytes); }
    std::string read(std::string_view name) const { return m_folder.read(name); }
    const std::string& path() const { return m_folder.path(); }

    Outcome run(const std::string& commands) const {
        write(".script", "cd '" + path()
                             + "' || exit 99\n"
                               "zro() { '" ZRO_PROGRAM "' \"$@\"; }\n"
                             + commands + "\n");
        const std::string script = path() + "/.script";
        const int status = std::system(
            ("bash " + script + " >" + path() + "/.out 2>" + path() + "/.err </dev/null").c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : 256 + status, read(".out"), read(".err")};
    }

private:
    TempFolder m_folder;
};

}  // namespace ZroCommon::testing
