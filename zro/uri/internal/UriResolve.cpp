#include "zro/uri/internal/UriResolve.h"

#include <string_view>

namespace ZroCommon::internal {
namespace {

constexpr std::int64_t kToTheRoot = 9999;  // more levels than a base has
constexpr std::int64_t kNoLimit = -1;

// A reference without the dots and the slash at its start.
struct Climb {
    std::u16string_view rest;
    std::int64_t levels = 0;
};

Climb climbOf(std::u16string_view reference) {
    if (reference == u".") {
        return {};
    }
    if (reference == u"..") {
        return {{}, 1};
    }
    Climb climb{reference, 0};
    while (climb.rest.starts_with(u"./") || climb.rest.starts_with(u"../")) {
        const bool climbs = climb.rest[1] == u'.';
        climb.levels += climbs ? 1 : 0;
        climb.rest.remove_prefix(climbs ? 3 : 2);
    }
    if (climb.rest.starts_with(u"//")) {
        climb.levels = 0;  // On purpose: such a reference names no host, and forgets its climbs.
    } else if (climb.rest.starts_with(u'/')) {
        climb.levels = kToTheRoot;
        climb.rest.remove_prefix(1);
    }
    return climb;
}

// "file:/..." is absolute. \return with the slashes that tell a host or a drive
UnicodeString completedFileUri(const UnicodeString& uri) {
    UnicodeString complete(uri);
    if (complete.charAt(6) != u'/') {
        complete.insert(6, u'/');  // On purpose: the first segment of "file:/a/b" becomes a host.
    }
    if (isDriveAt(viewOf(complete), 7)) {
        complete.insert(7, u'/');
    }
    return complete;
}

UnicodeString preparedReference(std::u16string_view reference, UriKind kind) {
    const UnicodeString text = textOf(reference);
    if (kind == UriKind::Path || (kind == UriKind::PathOrUri && schemeLength(reference) == 0)) {
        return pathToUri(text);
    }
    return isWellFormedUri(text) ? text : escapeUri(text);
}

void lowerScheme(UnicodeString& uri, std::size_t length) {
    for (int32_t i = 0; i < static_cast<int32_t>(length); ++i) {
        if (uri[i] >= u'A' && uri[i] <= u'Z') {
            uri.setCharAt(i, static_cast<char16_t>(uri[i] | 0x20));
        }
    }
}

// Brings the base into the form that its scheme asks for.
// \return the index of the lowest "/" that climbing may cut at
std::int64_t prepareBase(UnicodeString& base, std::size_t scheme) {
    constexpr std::u16string_view kLocalhost = u"file://localhost/";
    lowerScheme(base, scheme);
    const auto behindSlashes = static_cast<std::int64_t>(scheme) + 3;
    if (viewOf(base).starts_with(u"http://") || viewOf(base).starts_with(u"https://")) {
        const int32_t query = base.indexOf(u'?');
        if (query >= 0) {
            base.truncate(query);
        }
        return behindSlashes;
    }
    if (viewOf(base).starts_with(kLocalhost)) {
        base.replace(0, static_cast<int32_t>(kLocalhost.size()), u"file:///");
    }
    const std::u16string_view view = viewOf(base);
    if (view.substr(scheme + 1).starts_with(u"//")) {
        constexpr std::int64_t kBehindDrive = 10;  // the "/" of "file:///C:/"
        return view.starts_with(u"file:///") && isDriveAt(view, 8) ? kBehindDrive : behindSlashes;
    }
    const std::size_t entry = view.starts_with(u"jar:") ? view.rfind(u"!/") : view.npos;
    return entry == view.npos ? kNoLimit : static_cast<std::int64_t>(entry) + 1;
}

// Takes dot segments off the end. \return the levels that they climb
std::int64_t stripDots(std::u16string_view& base) {
    std::int64_t levels = 0;
    for (;;) {
        if (base.ends_with(u"/.")) {
            base.remove_suffix(1);
        } else if (base.ends_with(u"/..")) {
            base.remove_suffix(2);
            ++levels;
        } else if (base.ends_with(u"/./")) {
            base.remove_suffix(2);
        } else if (base.ends_with(u"/../")) {
            base.remove_suffix(3);
            ++levels;
        } else {
            return levels;
        }
    }
}

// Cuts the last segment and one more for each level, down to the limit.
void cutSegments(std::u16string_view& base, std::int64_t levels, std::int64_t limit) {
    for (std::int64_t i = 0; i <= levels; ++i) {
        const std::size_t slash = base.rfind(u'/');
        if (slash == base.npos || static_cast<std::int64_t>(slash) < limit) {
            return;
        }
        base = base.substr(0, slash);
    }
}

UnicodeString joined(const UnicodeString& base, const UnicodeString& reference, UriKind kind) {
    Climb climb = climbOf(viewOf(reference));
    UnicodeString rest = textOf(climb.rest);
    UnicodeString root(base);
    std::int64_t limit = kNoLimit;
    const std::size_t scheme = schemeLength(viewOf(base));
    if (scheme != 0) {
        if (kind != UriKind::Uri) {
            rest = escapeUri(rest);
        }
        limit = prepareBase(root, scheme);
    }
    std::u16string_view directory = viewOf(root);
    climb.levels += stripDots(directory);
    cutSegments(directory, climb.levels, limit);
    return textOf(directory).append(u'/').append(rest);
}

UnicodeString resolveOne(const UnicodeString& base, std::u16string_view reference, UriKind kind) {
    constexpr std::u16string_view kFile = u"file:";  // On purpose: "FILE:" is any other scheme.
    constexpr auto kFileLength = static_cast<int32_t>(kFile.size());
    UnicodeString prepared = preparedReference(reference, kind);
    if (viewOf(prepared).starts_with(kFile)) {
        if (prepared.charAt(kFileLength) == u'/') {
            return completedFileUri(prepared);
        }
        prepared.remove(0, kFileLength);
    }
    const bool standsAlone = schemeLength(viewOf(prepared)) != 0;
    if (standsAlone || base.indexOf(u'/') < 0 || viewOf(base) == u"./") {
        return prepared;
    }
    return joined(base, prepared, kind);
}

}  // namespace

UnicodeString resolveUri(const UnicodeString& base, const UnicodeString& reference, UriKind kind) {
    constexpr std::u16string_view kJar = u"jar:";
    UnicodeString resolved;
    std::u16string_view rest = trimmed(viewOf(reference));
    while (startsWithIgnoringCase(rest, kJar)) {
        resolved.append(kJar.data(), 0, static_cast<int32_t>(kJar.size()));
        rest = trimmed(rest.substr(kJar.size()));
    }
    if (!rest.empty()) {
        resolved.append(resolveOne(base, rest, kind));
    }
    return resolved;
}

}  // namespace ZroCommon::internal
