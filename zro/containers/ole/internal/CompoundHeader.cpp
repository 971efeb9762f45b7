#include "zro/containers/ole/internal/CompoundHeader.h"

#include <algorithm>

#include "zro/containers/ole/internal/FileNumbers.h"

namespace ZroCommon::internal {
namespace {

constexpr std::array<unsigned char, 8> kSignature = {0xD0, 0xCF, 0x11, 0xE0,
                                                     0xA1, 0xB1, 0x1A, 0xE1};
constexpr std::uint16_t kLittleEndianMark = 0xFFFE;
constexpr int kShiftLimit = 32;

std::string versionText(const unsigned char* bytes) {
    constexpr char kDigits[] = "0123456789abcdef";
    return {kDigits[bytes[0] >> 4], kDigits[bytes[0] & 15], ' ', kDigits[bytes[1] >> 4],
            kDigits[bytes[1] & 15]};
}

bool isStart(std::int32_t block) {
    return block >= 0 || block == CompoundHeader::kEndOfChain;
}

}  // namespace

bool CompoundHeader::hasSignature(const unsigned char* bytes) {
    return std::equal(kSignature.begin(), kSignature.end(), bytes);
}

OleRefusal CompoundHeader::parse(const unsigned char* bytes) {
    if (!hasSignature(bytes)) {
        return {OleCheck::Signature};
    }
    readFields(bytes);
    const OleRefusal refusal = check();
    if (refusal.check == OleCheck::Passed) {
        computeSizes();
    }
    return refusal;
}

void CompoundHeader::readFields(const unsigned char* bytes) {
    // On purpose: any other mark than that of little-endian files means big-endian.
    littleEndian = loadNumber<std::uint16_t>(bytes + 28, true) == kLittleEndianMark;
    version = versionText(bytes + 26);
    const auto number = [&](std::size_t at) {
        return loadNumber<std::uint32_t>(bytes + at, littleEndian);
    };
    blockShift = loadNumber<std::uint16_t>(bytes + 30, littleEndian);
    miniShift = loadNumber<std::uint16_t>(bytes + 32, littleEndian);
    fatBlockCount = number(44);
    dirStartBlock = static_cast<std::int32_t>(number(48));
    miniFatCutoff = static_cast<std::int32_t>(number(56));
    miniFatStartBlock = static_cast<std::int32_t>(number(60));
    miniFatBlockCount = number(64);
    indirectFatStartBlock = static_cast<std::int32_t>(number(68));
    indirectFatBlockCount = number(72);
    for (std::size_t i = 0; i < kFatBlocksHere; ++i) {
        fatBlocks[i] = loadSigned(bytes + 76 + 4 * i, littleEndian);
    }
}

OleRefusal CompoundHeader::check() const {
    if (blockShift >= kShiftLimit) {
        return {OleCheck::BlockShift, blockShift};
    }
    if (miniShift >= kShiftLimit) {
        return {OleCheck::MiniShift, miniShift};
    }
    if (dirStartBlock < 0) {
        return {OleCheck::DirectoryStart, dirStartBlock};
    }
    if (!isStart(miniFatStartBlock)) {
        return {OleCheck::MiniFatStart, miniFatStartBlock};
    }
    if (!isStart(indirectFatStartBlock)) {
        return {OleCheck::IndirectFatStart, indirectFatStartBlock};
    }
    return {};
}

void CompoundHeader::computeSizes() {
    bytesPerBlock = std::int64_t{1} << blockShift;
    bytesPerMini = std::int64_t{1} << miniShift;
    minisPerBlock = bytesPerBlock / bytesPerMini;
    longsPerBlock = bytesPerBlock / 4;
}

}  // namespace ZroCommon::internal
