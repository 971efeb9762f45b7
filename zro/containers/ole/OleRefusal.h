#pragma once

#include <cstdint>

namespace ZroCommon {

/// The checks that a compound file has to pass before it is open, in their order.
enum class OleCheck : std::uint8_t {
    Passed,               ///< none refused it
    Opening,              ///< the bytes cannot be reached
    HeaderSize,           ///< there are 512 bytes
    Signature,            ///< they start with D0 CF 11 E0 A1 B1 1A E1
    BlockShift,           ///< below 32
    MiniShift,            ///< below 32
    DirectoryStart,       ///< not negative
    MiniFatStart,         ///< not negative, or -2
    IndirectFatStart,     ///< not negative, or -2; when it is needed, not negative
    IndirectFatRead,      ///< the block is wholly in the file
    IndirectFatLoop,      ///< the chain comes to a block once
    IndirectFatCapacity,  ///< a block has room for a number
    FatRead,
    FatCapacity,
    MiniFatRead,
    MiniFatLength,  ///< the FAT can lead to so many blocks
    DirectoryRead,
    DirectoryLoop,
    DirectoryCapacity,  ///< a block has room for an entry
    DirectoryName,      ///< the length of a name is at most 64 bytes
    Memory              ///< there is enough of it
};

/// Why a file could not be opened as a compound file.
struct OleRefusal {
    OleCheck check = OleCheck::Passed;

    /// The number that failed: the block for the checks of reading, loops and names, the value in
    /// the header for starts, shifts, lengths and capacities; 0 for the others.
    std::int64_t number = 0;
};

}  // namespace ZroCommon
