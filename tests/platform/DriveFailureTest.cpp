#include "platform/DriveFailure.h"

#include <gtest/gtest.h>

#include "platform/RuntimeError.h"
#include "platform/WindowsHeader.h"

namespace vw {
namespace {

RuntimeError With(int number, std::uint32_t code) { return RuntimeError(number, {}, {}, 1, code); }

TEST(ConcernsDrive, CodeOfADrive_DecidesWhateverTheNumber) {
    for (const std::uint32_t code : {ERROR_NOT_READY, ERROR_DEVICE_NOT_CONNECTED, ERROR_BAD_NETPATH,
                                     ERROR_LOGON_FAILURE, ERROR_NOACCESS}) {
        EXPECT_TRUE(ConcernsDrive(With(error_number::kPermissionDenied, code))) << code;
    }
    for (const std::uint32_t code : {ERROR_ACCESS_DENIED, ERROR_CRC, ERROR_INVALID_FUNCTION}) {
        EXPECT_FALSE(ConcernsDrive(With(error_number::kDeviceError, code))) << code;
    }
}

TEST(ConcernsDrive, WithoutACode_NumberDecides) {
    for (const int number : {error_number::kDeviceError, error_number::kNoSuchDevice,
                             error_number::kNotReady, error_number::kPathNotFound}) {
        EXPECT_TRUE(ConcernsDrive(With(number, 0))) << number;
    }
    for (const int number : {error_number::kPermissionDenied, error_number::kDiskFull}) {
        EXPECT_FALSE(ConcernsDrive(With(number, 0))) << number;
    }
}

}  // namespace
}  // namespace vw
