#include "platform/RuntimeError.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vw {
namespace {

struct Sentence {
    int number;
    std::wstring_view text;
};

constexpr std::array kSentences{
    Sentence{error_number::kInvalidCall, L"Invalid procedure call or argument"},
    Sentence{error_number::kOverflow, L"Overflow"},
    Sentence{error_number::kOutOfMemory, L"Out of memory"},
    Sentence{error_number::kTypeMismatch, L"Type mismatch"},
    Sentence{error_number::kBadName, L"Bad file name or number"},
    Sentence{error_number::kFileNotFound, L"File not found"},
    Sentence{error_number::kDeviceError, L"Device I/O error"},
    Sentence{error_number::kAlreadyExists, L"File already exists"},
    Sentence{error_number::kDiskFull, L"Disk full"},
    Sentence{error_number::kPastEnd, L"Input past end of file"},
    Sentence{error_number::kTooManyFiles, L"Too many files"},
    Sentence{error_number::kNoSuchDevice, L"Device unavailable"},
    Sentence{error_number::kPermissionDenied, L"Permission denied"},
    Sentence{error_number::kNotReady, L"Disk not ready"},
    Sentence{error_number::kAccessError, L"Path/File access error"},
    Sentence{error_number::kPathNotFound, L"Path not found"},
    Sentence{error_number::kDestinationBusy, L"Another run is using the destination"},
    Sentence{error_number::kZeroCopyNumber, L"Copies are numbered from 1"},
    Sentence{error_number::kNotEnoughSpace, L"Not enough free space on the disk"},
    Sentence{error_number::kCancelled, L"The run was cancelled"},
    Sentence{error_number::kListPathMissing, L"Path not found"},
};

// The system's failure codes by the names that its documentation gives them. They are listed here
// once more because this file also builds where there is no such system.
constexpr std::uint32_t kFileNotFoundCode = 2;
constexpr std::uint32_t kPathNotFoundCode = 3;
constexpr std::uint32_t kTooManyOpenFilesCode = 4;
constexpr std::uint32_t kAccessDeniedCode = 5;
constexpr std::uint32_t kNotEnoughMemoryCode = 8;
constexpr std::uint32_t kOutOfMemoryCode = 14;
constexpr std::uint32_t kInvalidDriveCode = 15;
constexpr std::uint32_t kWriteProtectCode = 19;
constexpr std::uint32_t kNotReadyCode = 21;
constexpr std::uint32_t kCrcCode = 23;
constexpr std::uint32_t kSeekCode = 25;
constexpr std::uint32_t kSectorNotFoundCode = 27;
constexpr std::uint32_t kSharingViolationCode = 32;
constexpr std::uint32_t kLockViolationCode = 33;
constexpr std::uint32_t kHandleDiskFullCode = 39;
constexpr std::uint32_t kBadNetPathCode = 53;
constexpr std::uint32_t kBadNetNameCode = 67;
constexpr std::uint32_t kFileExistsCode = 80;
constexpr std::uint32_t kDiskFullCode = 112;
constexpr std::uint32_t kInvalidNameCode = 123;
constexpr std::uint32_t kBadPathNameCode = 161;
constexpr std::uint32_t kAlreadyExistsCode = 183;
constexpr std::uint32_t kFileNameTooLongCode = 206;
constexpr std::uint32_t kDirectoryCode = 267;
constexpr std::uint32_t kIoDeviceCode = 1117;
constexpr std::uint32_t kDiskQuotaExceededCode = 1295;

}  // namespace

RuntimeError::RuntimeError(int number, std::wstring description, std::wstring path,
                           std::uint_least32_t line, std::uint32_t systemCode)
    : number_(number),
      description_(std::move(description)),
      path_(std::move(path)),
      line_(line),
      systemCode_(systemCode) {}

std::wstring DescriptionOf(int number) {
    const auto* const found =
        std::find_if(kSentences.begin(), kSentences.end(),
                     [number](const Sentence& sentence) { return sentence.number == number; });
    if (found != kSentences.end()) {
        return std::wstring(found->text);
    }
    return L"Error " + std::to_wstring(number);
}

void Throw(int number, std::wstring_view path, const SourceLocation& where) {
    throw RuntimeError(number, DescriptionOf(number), std::wstring(path), where.line());
}

void ThrowWith(int number, std::wstring_view description, std::wstring_view path,
               const SourceLocation& where) {
    throw RuntimeError(number, std::wstring(description), std::wstring(path), where.line());
}

int ErrorNumberOf(std::uint32_t systemCode) noexcept {
    switch (systemCode) {
        case kFileNotFoundCode:
            return error_number::kFileNotFound;
        case kPathNotFoundCode:
        case kBadNetPathCode:
        case kBadNetNameCode:
            return error_number::kPathNotFound;
        case kAccessDeniedCode:
        case kSharingViolationCode:
        case kLockViolationCode:
        case kWriteProtectCode:
            return error_number::kPermissionDenied;
        case kFileExistsCode:
        case kAlreadyExistsCode:
            return error_number::kAlreadyExists;
        case kDiskFullCode:
        case kHandleDiskFullCode:
        case kDiskQuotaExceededCode:
            return error_number::kDiskFull;
        case kNotReadyCode:
            return error_number::kNotReady;
        case kInvalidDriveCode:
            return error_number::kNoSuchDevice;
        case kInvalidNameCode:
        case kBadPathNameCode:
        case kDirectoryCode:
        case kFileNameTooLongCode:
            return error_number::kBadName;
        case kCrcCode:
        case kIoDeviceCode:
        case kSeekCode:
        case kSectorNotFoundCode:
            return error_number::kDeviceError;
        case kTooManyOpenFilesCode:
            return error_number::kTooManyFiles;
        case kNotEnoughMemoryCode:
        case kOutOfMemoryCode:
            return error_number::kOutOfMemory;
        default:
            return error_number::kAccessError;
    }
}

}  // namespace vw
