// Copies a stream out of a compound file, such as a .doc, .xls or .msg, and says what kind of
// document the file is.
//
//     copy_stream letter.doc copy WordDocument
//     copy_stream letter.doc copy ObjectPool _1234 Package
#include <fstream>
#include <iostream>
#include <memory>

#include <zro/ZroCommon.h>

namespace zro = ZroCommon;

namespace {

const char* kindOf(const char* path) {
    std::ifstream file(path, std::ios::binary);
    switch (zro::OleCompFile::detectOLEDocument(file)) {
    case zro::OLEDOCUMENT_WORD: return "a text document";
    case zro::OLEDOCUMENT_EXCEL: return "a spreadsheet";
    case zro::OLEDOCUMENT_POWERPOINT: return "a presentation";
    case zro::OLEDOCUMENT_DOCUMENT_VIEW_STYLES: return "a document with view styles";
    case zro::OLEDOCUMENT_NONE: break;
    }
    return "another kind of file";
}

}  // namespace

int main(int count, char** arguments) {
    constexpr int kFirstName = 3;
    zro::OleDirPath path{count - kFirstName, {}};
    if (path.count < 1 || path.count > 4) {
        std::cerr << "usage: copy_stream FILE COPY [STORAGE]... STREAM\n";
        return 2;
    }
    for (int i = 0; i < path.count; ++i) {
        path.names[i] = arguments[kFirstName + i];
    }
    zro::OleCompFile file;
    if (!file.OLEopen(arguments[1])) {
        std::cerr << arguments[1] << ": no compound file, or a damaged one\n";
        return 1;
    }
    const std::unique_ptr<zro::OleStream> stream(file.OLEopenStream(&path));
    if (!stream) {
        std::cerr << arguments[1] << ": no such stream\n";
        return 1;
    }
    zro::ZROleStream bytes(stream.get(), -1);
    std::ofstream copy(arguments[2], std::ios::binary);
    if (stream->GetStreamSize() > 0) {
        copy << bytes.rdbuf();
    }
    if (!copy.flush()) {
        std::cerr << arguments[2] << ": cannot be written\n";
        return 1;
    }
    std::cout << arguments[1] << " is " << kindOf(arguments[1]) << ", " << stream->GetStreamSize()
              << " bytes copied\n";
    return 0;
}
