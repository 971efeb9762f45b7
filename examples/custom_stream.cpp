// Hands a store of one's own to the library: a controller lets a document be written into a sealed
// block, whose bytes nobody can read as they are, and be loaded out of it.
//
//     custom_stream
#include <algorithm>
#include <iostream>
#include <iterator>
#include <string>

#include <zro/ZroCommon.h>

namespace zro = ZroCommon;

namespace {

/// A block of bytes under a seal, which here is no more than every bit turned over.
class SealedBlock : public zro::ZRCustomStreamController {
public:
    const std::string& sealed() const { return m_sealed; }

    /// For the host itself; the library never calls it.
    void close() override { m_sealed.clear(); }

    int read(char* buffer, int size) override {
        const std::size_t count =
            std::min(static_cast<std::size_t>(size), m_sealed.size() - m_position);
        std::transform(m_sealed.begin() + static_cast<std::ptrdiff_t>(m_position),
                       m_sealed.begin() + static_cast<std::ptrdiff_t>(m_position + count), buffer,
                       turnedOver);
        m_position += count;
        return count == 0 ? -1 : static_cast<int>(count);  // 0 would be "ask again"
    }

    int write(const char* buffer, int size) override {
        std::transform(buffer, buffer + size, std::back_inserter(m_sealed), turnedOver);
        return size;
    }

private:
    static char turnedOver(char byte) { return static_cast<char>(~byte); }

    std::string m_sealed;
    std::size_t m_position = 0;
};

void save(SealedBlock& block) {
    const zro::ZRPtr<zro::ZRDocument> document = new zro::ZRDocument;
    document->loadXml(u"<note>For your eyes only</note>");
    zro::ZRCustomStream stream(&block);  // what it still holds goes on when it is destroyed
    document->save(stream);
}

std::string load(SealedBlock& block) {
    zro::ZRCustomStream stream(&block);
    const zro::ZRPtr<zro::ZRDocument> document = new zro::ZRDocument;
    document->load(stream);
    std::string text;
    return document->getDocumentElement()->getInnerText().toUTF8String(text);
}

}  // namespace

int main() {
    try {
        SealedBlock block;
        save(block);
        const bool isReadable = block.sealed().find("note") != std::string::npos;
        std::cout << "sealed: " << (isReadable ? "no" : "yes") << "\n" << load(block) << "\n";
    } catch (const zro::ZRError& error) {
        std::string text;
        std::cerr << error.getMessage().toUTF8String(text) << "\n";
        return 1;
    }
    return 0;
}
