#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

#include "platform/SourceLocation.h"

namespace vw {

/// Numbers of the errors that users meet in "Error n in line l". They are also the program's exit
/// codes (see platform/ExitStatus.h), so a number keeps its meaning from version to version.
namespace error_number {
inline constexpr int kInvalidCall = 5;
inline constexpr int kOverflow = 6;
inline constexpr int kOutOfMemory = 7;
inline constexpr int kTypeMismatch = 13;
inline constexpr int kBadName = 52;
inline constexpr int kFileNotFound = 53;
inline constexpr int kDeviceError = 57;
inline constexpr int kAlreadyExists = 58;
inline constexpr int kDiskFull = 61;
inline constexpr int kPastEnd = 62;
inline constexpr int kTooManyFiles = 67;
inline constexpr int kNoSuchDevice = 68;
inline constexpr int kPermissionDenied = 70;
inline constexpr int kNotReady = 71;
inline constexpr int kAccessError = 75;
inline constexpr int kPathNotFound = 76;
inline constexpr int kDestinationBusy = 170;
inline constexpr int kZeroCopyNumber = 1000;
inline constexpr int kUnknownDialogKind =
    1000;  ///< the one number with two meanings; both are given
inline constexpr int kNotEnoughSpace = 1004;
inline constexpr int kCancelled = 1223;
inline constexpr int kRecentIndexNotOne = 4000;  ///< only entry 1 of the recent lists is writable
inline constexpr int kListPathMissing = 4008;
}  // namespace error_number

/// An error as it is reported to the user: its number, what it means, the path it concerns (empty
/// when it concerns none) and the source line that thrown it.
class RuntimeError : public std::exception {
  public:
    RuntimeError(int number, std::wstring description, std::wstring path, std::uint_least32_t line,
                 std::uint32_t systemCode = 0);

    [[nodiscard]] int Number() const noexcept { return number_; }
    [[nodiscard]] const std::wstring& Description() const noexcept { return description_; }
    [[nodiscard]] const std::wstring& Path() const noexcept { return path_; }
    [[nodiscard]] std::uint_least32_t Line() const noexcept { return line_; }
    /// The system's own code for what went wrong; 0 when it was none of the system's failures.
    [[nodiscard]] std::uint32_t SystemCode() const noexcept { return systemCode_; }
    [[nodiscard]] const char* what() const noexcept override { return "vw::RuntimeError"; }

  private:
    int number_;
    std::wstring description_;
    std::wstring path_;
    std::uint_least32_t line_;
    std::uint32_t systemCode_;
};

/// The usual English sentence for one of the numbers above ("Path not found" for 76); the number
/// as "Error n" for any other.
[[nodiscard]] std::wstring DescriptionOf(int number);

/// Throws an error with its usual description. `path` is what the user has to look at.
[[noreturn]] void Throw(int number, std::wstring_view path = {},
                        const SourceLocation& where = SourceLocation::current());

/// Throws an error with a description of its own.
[[noreturn]] void ThrowWith(int number, std::wstring_view description, std::wstring_view path = {},
                            const SourceLocation& where = SourceLocation::current());

/// The error number for a failure code of the system (GetLastError): 53 for a missing file, 61 for
/// a full disk and so on; 75 for every code without a number of its own.
[[nodiscard]] int ErrorNumberOf(std::uint32_t systemCode) noexcept;

}  // namespace vw
