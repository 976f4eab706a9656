#pragma once

#include <gtest/gtest.h>

#include <new>

#include "platform/CCommonAPI.h"
#include "platform/ExitStatus.h"
#include "platform/SystemCodePage.h"
#include "tests/platform/FaultyRegistry.h"
#include "tests/support/FakeMessageBoxes.h"
#include "tests/support/RecordedErrors.h"
#include "tests/support/ScratchRegistry.h"

namespace vw::test {

/// CCommonAPI on the real registry, in the code page of the system. Unplanned boxes and faults
/// fail the test.
class ApiTest : public testing::Test {
  protected:
    ExitStatus exitStatus;
    RecordedErrors faults{exitStatus};
    FakeMessageBoxes boxes;
    CodePage ansi;
    FaultyRegistry registry;
    CCommonAPI api{registry, ansi, boxes, faults};
};

/// A code page whose use goes wrong, as with no memory left.
class FailingCodePage final : public AnsiCodec {
  public:
    [[nodiscard]] std::string Encode(std::wstring_view) const override { throw std::bad_alloc(); }
    [[nodiscard]] std::wstring Decode(std::string_view) const override { throw std::bad_alloc(); }
};

}  // namespace vw::test
