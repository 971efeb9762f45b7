#pragma once

#include <memory>
#include <optional>
#include <ostream>
#include <string>

#include "tools/zro/Session.h"

namespace zro {

/// Where a command writes bytes: standard output, or a file that it makes.
class Target {
public:
    /// Makes the file. None, and an error that says why, when it cannot be written or is the input
    /// itself.
    /// \param name  a path, or "-" for standard output
    static std::optional<Target> open(Session& session, const std::string& name,
                                      const Input& input);

    std::ostream& stream() { return m_file != nullptr ? *m_file : m_session->out(); }

    /// To be called at the end: an error when not all of it could be written.
    void finish();

private:
    Target(Session& session, std::string name) : m_session(&session), m_name(std::move(name)) {}

    Session* m_session;
    std::string m_name;
    std::unique_ptr<std::ostream> m_file;
};

}  // namespace zro
