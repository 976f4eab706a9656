#include "platform/SystemError.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/RuntimeError.h"
#include "platform/WindowsHeader.h"
#include "tests/support/ErrorNumber.h"

namespace vw {
namespace {

RuntimeError WithCode(std::uint32_t code) {
    return RuntimeError(error_number::kDeviceError, L"Device I/O error", L"C:\\a", 1, code);
}

TEST(SystemText, WithoutACode_IsTheDescription) {
    EXPECT_EQ(SystemText(WithCode(0)), L"Device I/O error");
}

TEST(SystemText, UnknownCode_IsTheDescription) {
    EXPECT_EQ(SystemText(WithCode(0x2FFFFFFF)), L"Device I/O error");
}

TEST(SystemText, KnownCode_IsTheSentenceOfTheSystemWithoutItsLineEnd) {
    for (const DWORD code : {ERROR_INVALID_FUNCTION, ERROR_CRC}) {
        wchar_t sentence[512] = {};
        FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code, 0,
                       sentence, 512, nullptr);
        const std::wstring text = SystemText(WithCode(code));
        EXPECT_EQ(text + L"\r\n", sentence);
        EXPECT_GT(text.size(), 5U);
    }
}

TEST(RaiseLast, LastFailure_IsThrownWithPathAndLine) {
    unsigned line = 0;
    const RuntimeError error = test::ErrorOf([&] {
        SetLastError(ERROR_CRC);
        line = __LINE__ + 1;
        RaiseLast(L"C:\\a");
    });
    EXPECT_EQ(error.Number(), error_number::kDeviceError);
    EXPECT_EQ(error.SystemCode(), static_cast<std::uint32_t>(ERROR_CRC));
    EXPECT_EQ(error.Path(), L"C:\\a");
    EXPECT_EQ(error.Line(), line);
}

}  // namespace
}  // namespace vw
