#pragma once

/// Marks what leaves the library; everything else is hidden.
#define ZRO_API __attribute__((visibility("default")))
