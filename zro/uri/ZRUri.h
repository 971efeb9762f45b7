#pragma once

#include <atomic>
#include <cstdint>
#include <iosfwd>

#include "zro/foundation/Export.h"
#include "zro/foundation/Text.h"
#include "zro/uri/ZRUriReferenceResolver.h"

namespace ZroCommon {

/// A loaded dynamic library.
using HINSTANCE = void*;

/// What the text given to a `ZRUri` is.
enum URISTRTYPE : std::uint8_t {
    URISTR_GUESS,           ///< a path if it has a drive letter or a backslash, else a URI
    URISTR_PATH_OR_URI,     ///< a URI if it has a scheme, else a path
    URISTR_GUESS_CSS,       ///< as `URISTR_GUESS`, with "url(...)" and quotes taken off
    URISTR_PATH_OR_URI_CSS  ///< as `URISTR_PATH_OR_URI`, with "url(...)" and quotes taken off
};

/// The name of a resource: a path, or a `file:`, `http:`, `jar:` or `data:` URI, held as one
/// normalised text.
///
/// A value: copy it freely. All work is done on the text, and the rules are the same on every
/// platform: drive letters, backslashes and UNC names are understood everywhere. Any text is
/// accepted; what makes no sense stays a relative reference with its bad characters escaped.
/// Queries that fail answer with the empty text or false.
class ZRO_API ZRUri {
public:
    ZRUri() = default;

    /// Classifies and normalises `str`.
    ZRUri(const UnicodeString& str, URISTRTYPE type);

    /// Classifies `str` and resolves it against `base`. An empty `str` gives an empty URI, not the
    /// base; dot segments are taken off only at the start of `str` and at the end of `base`.
    ZRUri(const ZRUri& base, const UnicodeString& str, URISTRTYPE type);

    ZRUri(const ZRUri&) = default;
    ZRUri(ZRUri&&) noexcept = default;
    ZRUri& operator=(const ZRUri&) = default;
    ZRUri& operator=(ZRUri&&) noexcept = default;
    virtual ~ZRUri();

    /// Opens the file `name`, a path or a URI, for writing; this object has no part in it. The file
    /// is emptied, and no directory is made.
    /// \return a new binary stream for `releaseOStream`, or null when it cannot be opened
    virtual std::ostream* createOStream(const UnicodeString& name);

    /// Closes and deletes a stream of `createOStream`. Null is allowed.
    virtual void releaseOStream(std::ostream* stream);

    const UnicodeString& toString() const { return m_uri; }
    operator const UnicodeString&() const { return m_uri; }
    bool isEmpty() const { return m_uri.isEmpty(); }

    /// Code-unit order of the texts.
    bool operator<(const ZRUri& other) const { return m_uri.compare(other.m_uri) < 0; }

    /// True with a scheme of two characters or more; "C:" is none.
    bool isAbsolute() const;

    /// The scheme as written, without its colon.
    UnicodeString getScheme() const;

    /// True for `file:` and for anything without a scheme.
    bool isFile() const;
    bool isJarScheme() const;
    bool isDataScheme() const;

    /// The path behind a `file:` URI or a relative reference, unescaped: "C:\a\b", "\\host\a",
    /// "/a/b" (from `file:/a/b`) or "a/b". Any other URI is returned as it stands, with its
    /// escapes: a `jar:` URI is no local path, even when its package is a file.
    UnicodeString getLocalPath() const;

    /// The text up to its last "/", converted as by `getLocalPath`; "./" when there is no "/".
    UnicodeString getBaseString() const;

    /// For a `file:` URI the local path behind its last backslash (all of it when it has none), for
    /// anything else the text behind the last "/".
    UnicodeString getFileName() const;

    /// The extension of the last segment with its dot, or empty. Also empty for `data:`.
    UnicodeString getExtension() const;

    /// This URI relative to the directory of `base`, such as "../b/c.png"; empty when there is no
    /// common directory.
    UnicodeString getRelativeUri(const UnicodeString& base);

    /// True when both are files whose local paths are the same but for case.
    bool isSameFile(const ZRUri& other) const;

    /// True when something, a file or a directory, is at the local path.
    bool isFileExists() const;
    /// \param path  a path in the default code page (UTF-8); null is no file
    static bool isFileExists(const char* path);
    /// \param path  a path in UTF-16, ended by U+0000; null is no file
    static bool isFileExists(const char16_t* path);

    /// Cuts the text at its first "#". \return what was cut, with the "#"
    UnicodeString removeFragment();

    /// Replaces the extension of the last segment, or adds one. A text that ends in "/" stays.
    /// \param extension  the new one with its dot; null only removes
    /// \return the old one with its dot
    UnicodeString setExtension(const UnicodeString* extension);
    UnicodeString setExtension(const UnicodeString& extension) { return setExtension(&extension); }

    /// Adds a "/" at the end unless one is there. \return a copy of the text
    UnicodeString toDirectory();
    /// Adds `separator` to `path` unless it ends in it. \return a copy of `path`
    static UnicodeString toDirectory(UnicodeString& path, char16_t separator);

    /// Takes percent-escapes, which stand for UTF-8 bytes, off a text.
    static UnicodeString unescape(const UnicodeString& text);

    /// Opens the resource for reading: what the installed resolver gives for it, else a file (when
    /// `isFile`), the answer to an `http:` or `https:` request, or an entry of the package that a
    /// `jar:` URI names, which is opened in the same way and may be an entry itself. Names of
    /// entries are taken as they stand: "%20" in one is three characters. `data:` and all other
    /// schemes are refused as addresses unless the resolver serves them; `ZRDataUri` reads the
    /// former.
    /// \param contentType   set to the media type that an answer tells, emptied for an entry, else
    ///                      left alone; may be null
    /// \param errorMessage  set to why an address does not open ("HTTP status is 404"), emptied
    ///                      when it does, left alone when there was none; may be null
    /// \return a new stream that the caller deletes; null when there is none, for a directory, and
    ///         for want of memory. Nothing is thrown.
    std::istream* getStream(UnicodeString* contentType, UnicodeString* errorMessage) const;
    std::istream* getStream(UnicodeString* contentType) const;

    /// What the installed resolver gives for this URI: a new stream that the caller deletes, or
    /// null, also when there is no resolver.
    std::istream* getStreamFromResolver() const;

    /// The file at the local path as a stream that takes gzip off; what is not gzip is given as it
    /// is. \return a new stream that the caller deletes, or null when the file cannot be opened
    std::istream* getGzipStream() const;
    /// The same from the start of a stream that can seek and stays the caller's.
    static std::istream* getGzipStream(std::istream& stream);

    /// Whether the resource can be opened and begins as gzip data does.
    bool isGzip() const;
    /// Whether the stream begins so. It is left behind the two bytes that tell.
    static bool isGzip(std::istream& stream);

    /// Installs a resolver for the whole process, before threads start. It is not owned; null
    /// removes it. \return the previous one
    static ZRUriReferenceResolver* setUriReferenceResolver(ZRUriReferenceResolver* resolver);
    static ZRUriReferenceResolver* getUriReferenceResolver();

    /// Where the library finds a companion file.
    ///
    /// The directory is the first of: the value of the environment variable `envName`, if such a
    /// file exists; the directory of the loaded module `module`; "./". Each argument may be null or
    /// empty.
    /// \param name  a name to resolve in that directory; without it the directory itself is given
    static ZRUri getModuleUri(const char* module, const char* name, const char* envName);

    /// Loads the local path as a dynamic library. \return its handle, or null
    HINSTANCE loadLibrary() const;
    /// The address of a symbol, or null.
    static void* getProcAddress(HINSTANCE library, const char* name);
    /// Gives a library back; a null handle is ignored.
    static void freeLibrary(HINSTANCE library);

protected:
    UnicodeString m_uri;

private:
    static std::atomic<ZRUriReferenceResolver*> s_resolver;
};

}  // namespace ZroCommon
