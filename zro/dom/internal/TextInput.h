#pragma once

#include <istream>

#include "zro/foundation/StreamBuffer.h"
#include "zro/foundation/Text.h"

namespace ZroCommon::internal {

/// The UTF-16 units of a text as a seekable stream of bytes, in the byte order of the machine.
class TextInput : public std::istream {
public:
    explicit TextInput(const UnicodeString& text);
    TextInput(const TextInput&) = delete;
    TextInput& operator=(const TextInput&) = delete;
    ~TextInput() override;

    /// Becomes empty.
    void drop();

private:
    class Buffer : public StreamBuffer {
    public:
        explicit Buffer(const UnicodeString& text);
        void drop();

    protected:
        pos_type seekoff(off_type offset, std::ios_base::seekdir from,
                         std::ios_base::openmode which) override;
        pos_type seekpos(pos_type position, std::ios_base::openmode which) override;

    private:
        UnicodeString m_text;
    };

    Buffer m_buffer;
};

}  // namespace ZroCommon::internal
