#pragma once

// What nearly every test needs.
#include <string>

#include <gtest/gtest.h>

#include "tests/support/Errors.h"
#include "tests/support/Rows.h"
#include "tests/support/Text.h"
