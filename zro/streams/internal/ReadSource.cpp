#include "zro/streams/internal/ReadSource.h"

#include <algorithm>
#include <ios>
#include <new>
#include <streambuf>

namespace ZroCommon::internal {
namespace {

using Traits = std::istream::traits_type;

// The stream may be told to throw when it fails; that is for its owner, not for us.
void mark(std::istream& source, std::ios_base::iostate state) {
    try {
        source.setstate(state);
    } catch (const std::ios_base::failure&) {
        return;
    }
}

// What can be had without waiting again; an unbuffered source does not tell.
std::streamsize readyBytes(std::streambuf& buffer, std::streamsize wanted) {
    if (Traits::eq_int_type(buffer.sgetc(), Traits::eof())) {
        return 0;
    }
    const std::streamsize ready = buffer.in_avail();
    return ready > 0 ? std::min(ready, wanted) : wanted;
}

template <class Amount>
std::size_t readGuarded(std::istream& source, char* bytes, std::streamsize wanted,
                        Amount amountOf) {
    std::streamsize got = 0;
    std::ios_base::iostate state = std::ios_base::goodbit;
    try {
        const std::istream::sentry ready(source, true);
        if (ready) {
            const std::streamsize amount = amountOf(*source.rdbuf());
            if (amount > 0) {
                got = std::clamp<std::streamsize>(source.rdbuf()->sgetn(bytes, amount), 0, amount);
            }
            if (got < std::max<std::streamsize>(amount, std::min<std::streamsize>(wanted, 1))) {
                state = std::ios_base::eofbit | std::ios_base::failbit;
            }
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

}  // namespace

std::size_t readSource(std::istream& source, char* bytes, std::size_t count) {
    const auto wanted = static_cast<std::streamsize>(count);
    return readGuarded(source, bytes, wanted, [wanted](std::streambuf&) { return wanted; });
}

std::size_t readReady(std::istream& source, char* bytes, std::size_t count) {
    const auto wanted = static_cast<std::streamsize>(count);
    return readGuarded(source, bytes, wanted,
                       [wanted](std::streambuf& buffer) { return readyBytes(buffer, wanted); });
}

}  // namespace ZroCommon::internal
