#include "zro/platform/internal/EncodingDetector.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

#include <unicode/ucsdet.h>

namespace ZroCommon::internal {
namespace {

struct Closer {
    void operator()(UCharsetDetector* detector) const { ucsdet_close(detector); }
};

// Below that the answers of the detector are mostly wrong.
constexpr int32_t kLeastConfidence = 25;

// It finds the first two in noise, the others in files of zeros.
constexpr std::array<std::string_view, 4> kRefused = {"IBM420", "IBM424", "UTF-32BE", "UTF-32LE"};

struct Renaming {
    std::string_view found;
    std::string_view name;
};

// The larger sets, which hold what files of that name hold in practice.
constexpr auto kRenamings = std::to_array({
    Renaming{"Shift_JIS", "WINDOWS31J"},
    Renaming{"Big5", "ChineseBIG5"},
    Renaming{"EUC-KR", "KoreanKSC"},
});

// The detector does not know UTF-16 without a byte order mark. Its blanks, line ends and whatever
// is in ASCII have a zero byte on one side; some ideographs have one on the other.
std::optional<std::string> detectUtf16(std::string_view bytes) {
    std::array<std::size_t, 2> zeros{};  // at even and at odd places
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        zeros[index % 2] += bytes[index] == '\0' ? 1U : 0U;
    }
    const auto isSide = [&bytes](std::size_t high, std::size_t low) {
        return high >= 2 && high * 16 >= bytes.size() && high >= low * 4;
    };
    if (isSide(zeros[1], zeros[0])) {
        return "UTF-16LE";
    }
    if (isSide(zeros[0], zeros[1])) {
        return "UTF-16BE";
    }
    return std::nullopt;
}

std::optional<std::string> nameOf(std::string_view found) {
    for (const std::string_view refused : kRefused) {
        // The right-to-left and left-to-right variants carry a suffix.
        if (found.starts_with(refused)) {
            return std::nullopt;
        }
    }
    for (const Renaming& renaming : kRenamings) {
        if (found == renaming.found) {
            return std::string(renaming.name);
        }
    }
    return std::string(found);
}

}  // namespace

std::optional<std::string> detectEncoding(std::string_view bytes) {
    if (bytes.empty()) {
        return std::nullopt;
    }
    if (std::optional<std::string> wide = detectUtf16(bytes)) {
        return wide;
    }
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UCharsetDetector, Closer> detector(ucsdet_open(&status));
    ucsdet_setText(detector.get(), bytes.data(), static_cast<int32_t>(bytes.size()), &status);
    const UCharsetMatch* match = ucsdet_detect(detector.get(), &status);
    if (U_FAILURE(status) != 0 || match == nullptr
        || ucsdet_getConfidence(match, &status) < kLeastConfidence) {
        return std::nullopt;
    }
    const char* name = ucsdet_getName(match, &status);
    return name == nullptr ? std::nullopt : nameOf(name);
}

}  // namespace ZroCommon::internal
