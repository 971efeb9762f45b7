#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

#include "tests/support/Text.h"

namespace ZroCommon::testing {

/// A folder of its own for one test, removed with all that is in it.
class TempFolder {
public:
    explicit TempFolder(
        const std::filesystem::path& parent = std::filesystem::temp_directory_path()) {
        std::string name = (parent / "zro-test-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("cannot make a folder");
        }
        m_path = name;
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    /// Its path without a slash at the end, such as "/tmp/zro-test-a1b2c3".
    const std::string& path() const { return m_path; }
    /// The path of a file in it, as the library takes it.
    UnicodeString file(std::string_view name) const {
        return text(m_path + "/" + std::string(name));
    }

    /// Makes a file. \return its path
    UnicodeString write(std::string_view name, std::string_view bytes) const {
        std::ofstream(m_path + "/" + std::string(name), std::ios::binary) << bytes;
        return file(name);
    }

    std::string read(std::string_view name) const {
        std::ifstream in(m_path + "/" + std::string(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

private:
    std::string m_path;
};

}  // namespace ZroCommon::testing
