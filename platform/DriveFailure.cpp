#include "platform/DriveFailure.h"

#include <algorithm>
#include <array>

#include "platform/WindowsHeader.h"

namespace vw {

namespace {

constexpr std::array<DWORD, 28> kDriveCodes{
    ERROR_NOT_READY,
    ERROR_INVALID_DRIVE,
    ERROR_BAD_UNIT,
    ERROR_GEN_FAILURE,
    ERROR_IO_DEVICE,
    ERROR_DEV_NOT_EXIST,
    ERROR_BAD_DEV_TYPE,
    ERROR_DEVICE_NOT_CONNECTED,
    ERROR_NO_MEDIA_IN_DRIVE,
    ERROR_UNRECOGNIZED_VOLUME,
    ERROR_BAD_NETPATH,
    ERROR_BAD_NET_NAME,
    ERROR_NETNAME_DELETED,
    ERROR_NETWORK_BUSY,
    ERROR_NETWORK_ACCESS_DENIED,
    ERROR_UNEXP_NET_ERR,
    ERROR_REM_NOT_LIST,
    ERROR_BAD_NET_RESP,
    ERROR_ADAP_HDW_ERR,
    ERROR_SEM_TIMEOUT,
    ERROR_NETWORK_UNREACHABLE,
    ERROR_HOST_UNREACHABLE,
    ERROR_CONNECTION_ABORTED,
    ERROR_CONNECTION_REFUSED,
    ERROR_NO_NETWORK,
    ERROR_NO_NET_OR_BAD_PATH,
    ERROR_LOGON_FAILURE,
    // Drivers report with it that a request broke off.
    ERROR_NOACCESS,
};

// The provider of a cloud folder does not run or reaches no server, or its user is signed out. The
// headers of the compiler lack some of the names.
constexpr std::array<DWORD, 5> kCloudCodes{
    362,  // ERROR_CLOUD_FILE_PROVIDER_NOT_RUNNING
    386,  // ERROR_CLOUD_FILE_AUTHENTICATION_FAILED
    388,  // ERROR_CLOUD_FILE_NETWORK_UNAVAILABLE
    404,  // ERROR_CLOUD_FILE_PROVIDER_TERMINATED
    426,  // ERROR_CLOUD_FILE_REQUEST_TIMEOUT
};

constexpr std::array kDriveNumbers{
    error_number::kDeviceError,
    error_number::kNoSuchDevice,
    error_number::kNotReady,
    error_number::kPathNotFound,
};

}  // namespace

bool ConcernsCloud(const RuntimeError& error) noexcept {
    return std::ranges::find(kCloudCodes, error.SystemCode()) != kCloudCodes.end();
}

bool ConcernsDrive(const RuntimeError& error) noexcept {
    if (error.SystemCode() != 0) {
        return std::ranges::find(kDriveCodes, error.SystemCode()) != kDriveCodes.end();
    }
    return std::ranges::find(kDriveNumbers, error.Number()) != kDriveNumbers.end();
}

}  // namespace vw
