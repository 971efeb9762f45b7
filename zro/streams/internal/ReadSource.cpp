#include "zro/streams/internal/ReadSource.h"

#include <algorithm>
#include <ios>
#include <new>
#include <streambuf>

namespace ZroCommon::internal {
namespace {

// The stream may be told to throw when it fails; that is for its owner, not for us.
void mark(std::istream& source, std::ios_base::iostate state) {
    try {
        source.setstate(state);
    } catch (const std::ios_base::failure&) {
        return;
    }
}

}  // namespace

std::size_t readSource(std::istream& source, char* bytes, std::size_t count) {
    const auto wanted = static_cast<std::streamsize>(count);
    std::streamsize got = 0;
    std::ios_base::iostate state = std::ios_base::goodbit;
    try {
        const std::istream::sentry ready(source, true);
        if (ready) {
            got = std::clamp<std::streamsize>(source.rdbuf()->sgetn(bytes, wanted), 0, wanted);
            state = got < wanted ? std::ios_base::eofbit | std::ios_base::failbit : state;
        }
    } catch (const std::bad_alloc&) {
        mark(source, std::ios_base::badbit);
        throw;
    } catch (...) {
        state = std::ios_base::badbit;
    }
    mark(source, state);
    return static_cast<std::size_t>(got);
}

}  // namespace ZroCommon::internal
