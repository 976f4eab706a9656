#pragma once

#include <gtest/gtest.h>

#include "tests/support/TempTree.h"
#include "tests/support/TestEnvironment.h"

namespace vw::test {

/// A test with a folder and a world of its own.
class DiskTest : public testing::Test {
  protected:
    TempTree tree;
    TestEnvironment world;
};

}  // namespace vw::test
