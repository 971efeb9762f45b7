#pragma once

#include <array>
#include <ostream>
#include <stdexcept>
#include <streambuf>

namespace zro {

/// Thrown when standard output takes no more.
class OutputFailure : public std::runtime_error {
public:
    explicit OutputFailure(int error);

    /// The reader has gone, which is its right: `zro events x.fo | head`.
    bool isBrokenPipe() const;

private:
    int m_error;
};

/// Standard output through a buffer of its own, which remembers why a write failed.
class OutputBuffer : public std::streambuf {
public:
    OutputBuffer();
    OutputBuffer(const OutputBuffer&) = delete;
    OutputBuffer& operator=(const OutputBuffer&) = delete;
    ~OutputBuffer() override;

    /// The system's error number, 0 as long as all is well.
    int error() const { return m_error; }

    /// \throws OutputFailure  when anything could not be written
    void finish();

protected:
    int_type overflow(int_type character) override;
    int sync() override;

private:
    bool writeOut();

    std::array<char, 65536> m_buffer{};
    int m_error = 0;
};

}  // namespace zro
