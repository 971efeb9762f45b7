#pragma once

#include <cstdint>
#include <functional>
#include <istream>
#include <memory>
#include <ostream>
#include <string>

#include "zro/xml/ZRLimits.h"

#include "tools/zro/Diagnostic.h"
#include "tools/zro/Input.h"
#include "tools/zro/Output.h"
#include "tools/zro/ResourceGate.h"
#include "tools/zro/Terminal.h"

namespace zro {

/// Ends documents that grow by their entities without end, or whose external entities bring in
/// themselves, and refuses no sensible one.
inline ZroCommon::ZRLimits commonLimits() {
    ZroCommon::ZRLimits limits;
    limits.entityExpansionFactor = ZroCommon::ZRLimits::strict().entityExpansionFactor;
    limits.inputNesting = ZroCommon::ZRLimits::strict().inputNesting;
    return limits;
}

/// What the options that go with every command say.
struct Settings {
    bool json = false;
    When color = When::Auto;
    External external = External::Local;
    ZroCommon::ZRLimits limits = commonLimits();
};

/// One run of the program: where results and diagnostics go, and what they add up to.
class Session {
public:
    static constexpr int kGood = 0;
    static constexpr int kErrors = 1;
    static constexpr int kWrongUsage = 2;

    explicit Session(const Settings& settings);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    const Settings& settings() const { return m_settings; }

    /// Results. A write that fails ends the program at the next `flush` of the session.
    std::ostream& out() { return m_out; }
    const Style& outStyle() const { return m_outStyle; }

    /// To be called before a parser or document opens the input: counts its bytes, moves the
    /// progress bar, and lets the document itself through whatever it may fetch.
    /// \throws ZRError  when it is standard input and that cannot be read
    void begin(const Input& input);
    /// The bytes of the input as they come, counted as well; cannot seek. Null when there is none;
    /// see `openInput`.
    std::unique_ptr<std::istream> open(const Input& input);
    /// Counts the bytes of a stream that was opened by other means, of unknown length.
    std::unique_ptr<std::istream> counted(const Input& input, std::unique_ptr<std::istream> stream);
    /// What the library said when it did not open the last input; mostly nothing.
    const UnicodeString& failure() const { return m_gate.failure(); }
    /// Anything that the library opens, whatever documents may fetch. Null when it does not.
    std::unique_ptr<std::istream> openFreely(const UnicodeString& uri);
    /// Bytes of the input read since `begin` or `open`.
    std::uint64_t bytesRead() const { return m_bytesRead; }

    std::istream& standardInput() { return m_standardInput; }
    /// Why standard input gives nothing, a folder for example; mostly nothing. Waits for its start.
    std::string standardInputFailure();

    /// The input from its start once more, or null when it cannot be had twice.
    std::unique_ptr<std::istream> reopen(const Input& input);
    std::unique_ptr<std::istream> reopen(const UnicodeString& uri);

    /// Prints a diagnostic on standard error. An error makes the exit status 1.
    void report(const Diagnostic& diagnostic);
    /// The same for an error without a place in a text.
    /// \param file  as the user knows it; empty when it is about no file
    void fail(const std::string& file, const std::string& message, const std::string& hint = "");
    void note(const std::string& file, const std::string& message, const std::string& hint = "");

    /// Keeps the progress bar away, for results that go to the terminal while the input is read.
    void hideProgress() { m_progress.hide(); }

    /// The same for a resource of the document that an error is about.
    UnicodeString takeFailure(const UnicodeString& uri) { return m_gate.takeFailure(uri); }

    /// To be called when the input has been read: takes the progress bar away, and says which
    /// resources the document asked for in vain.
    void end(const Input& input);

    /// Whether standard output has failed, so that further results are in vain.
    bool isOutputLost() const { return m_buffer.error() != 0; }

    /// \throws OutputFailure  when results could not be written
    void finish() { m_buffer.finish(); }

    int status() const { return m_status; }

private:
    void startCount(const Input& input, std::uint64_t size);
    void countBytes(std::uint64_t bytes);
    void noteMissing(const Input& input, const MissingResource& missing);

    Settings m_settings;
    OutputBuffer m_buffer;
    std::ostream m_out{&m_buffer};
    Style m_outStyle;
    Style m_errorStyle;
    ResourceGate m_gate;
    Progress m_progress;
    std::uint64_t m_bytesRead = 0;
    OwningStream<StandardInput> m_standardInput;
    int m_status = kGood;
};

/// What the command line asks for, once it has been read.
using Task = std::function<void(Session&)>;

}  // namespace zro
