// Looks into a ZIP package that lies in another one: lists what is in it, and loads a document out
// of it by a `jar:` URI, which is all that a program needs that just wants the document.
//
//     entry_in_entry outer.zip inner.zip letter.fo
#include <iostream>
#include <memory>
#include <string>

#include <zro/ZroCommon.h>

namespace zro = ZroCommon;

namespace {

std::string utf8(const zro::UnicodeString& text) {
    std::string bytes;
    return text.toUTF8String(bytes);
}

/// What the entry `inner` of the package at `path` has in it.
void list(const zro::UnicodeString& path, const zro::UnicodeString& inner) {
    const zro::ZRZipFile outer(path);
    zro::ZRZipFileEntry* const entry = outer.getFileEntry(inner);
    if (entry == nullptr) {
        std::cerr << utf8(inner) << ": no such entry\n";
        return;
    }
    // An entry's stream cannot seek, as a package has to; a memory stream holds it as far as it is
    // read. The `true` hands the stream over.
    zro::ZRMemStream seekable(entry->getUncompressedStream(true), 8192, true);
    const zro::ZRZipFile package(&seekable, false);
    for (unsigned i = 0; i < package.getFileEntryCount(); ++i) {
        const zro::ZRZipFileEntry& found = *package.getFileEntry(i);
        std::cout << found.getUncompressedSize() << " bytes  " << utf8(found.getFileName()) << "\n";
    }
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 4) {
        std::cerr << "usage: entry_in_entry PACKAGE INNER-PACKAGE DOCUMENT\n";
        return 2;
    }
    try {
        const auto path = zro::UnicodeString::fromUTF8(arguments[1]);
        const auto inner = zro::UnicodeString::fromUTF8(arguments[2]);
        list(path, inner);
        const zro::UnicodeString uri =
            u"jar:" + path + u"!/" + inner + u"!/" + zro::UnicodeString::fromUTF8(arguments[3]);
        const zro::ZRPtr<zro::ZRDocument> document = new zro::ZRDocument;
        document->load(uri);
        std::cout << utf8(uri) << ": "
                  << utf8(document->getDocumentElement()->getNodeName().toString()) << "\n";
    } catch (const zro::ZRError& error) {
        std::cerr << utf8(error.getMessage()) << "\n";
        return 1;
    }
    return 0;
}
