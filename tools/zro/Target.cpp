#include "tools/zro/Target.h"

#include <filesystem>
#include <system_error>
#include <unistd.h>

#include "zro/uri/ZRUri.h"

#include "tools/zro/Opening.h"

namespace zro {

std::optional<Target> Target::open(Session& session, const std::string& name, const Input& input) {
    Target target(session, name);
    if (name == "-") {
        if (isatty(STDOUT_FILENO) == 1) {
            session.hideProgress();  // it would stand in the midst of the bytes
        }
        return target;
    }
    const UnicodeString uri = absoluteName(name);
    std::error_code ignored;
    if (std::filesystem::equivalent(localPath(uri), input.path(), ignored)) {
        session.fail(name, "cannot be written: is the file that is read");
        return std::nullopt;
    }
    target.m_file.reset(ZroCommon::ZRUri().createOStream(uri));
    if (target.m_file == nullptr) {
        session.fail(name, "cannot be written: " + reasonNotWritten(localPath(uri)));
        return std::nullopt;
    }
    return target;
}

void Target::finish() {
    if (!stream().flush() && !m_session->isOutputLost()) {
        m_session->fail(m_name, "cannot be written");
    }
}

}  // namespace zro
