#pragma once

namespace ZroCommon::internal {

/// Where and how a section is written.
struct CellPlace {
    int width = 0;
    int limit = 0;         ///< columns that end the walk: the width, or none if a callback measures
    bool isFilled = true;  ///< "*" fills up; else its character is written once
    bool isSystem1904 = false;
    bool isCurrentVersion = true;  ///< of the book; others have Japanese long weekdays
};

}  // namespace ZroCommon::internal
