#include "platform/DebugOutput.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/WindowsHeader.h"
#include "tests/support/ImportHook.h"

namespace vw::test {
namespace {

std::wstring debugText;

void WINAPI CatchDebugText(LPCWSTR text) { debugText = text; }

TEST(DebugOutput, Error_HasTheFormOfTheProgram) {
    const ImportHook hook("OutputDebugStringW", &CatchDebugText);
    DebugOutput().Report({L"RegValue", L"Class Module", L"CCommonAPI"},
                         RuntimeError(7, L"Out of memory", L"", 12));
    EXPECT_EQ(debugText,
              L"Error 7 in line 12\r\nin procedure RegValue of Class Module CCommonAPI\r\n\r\n"
              L"Out of memory\r\n");
}

}  // namespace
}  // namespace vw::test
