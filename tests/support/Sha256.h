#pragma once

#include <cstdlib>
#include <string>
#include <string_view>

#include "tests/support/TempFolder.h"

namespace ZroCommon::testing {

/// SHA-256 of bytes that come in pieces, by the program sha256sum of the GNU core utilities.
class Sha256 {
public:
    void add(std::string_view bytes) { m_bytes += bytes; }

    /// The digest in hexadecimal; not one without that program.
    std::string hex() const {
        const TempFolder folder;
        const std::string path = folder.path() + "/bytes";
        folder.write("bytes", m_bytes);
        const int status = std::system(("sha256sum <" + path + " >" + path + ".sum").c_str());
        return status == 0 ? folder.read("bytes.sum").substr(0, 64) : "sha256sum fails";
    }

private:
    std::string m_bytes;
};

}  // namespace ZroCommon::testing
