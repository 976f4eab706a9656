#include "ui/ProgramVersion.h"

#include <cstddef>
#include <cstring>

#include "platform/WindowsHeader.h"

namespace vw {

namespace {

// A version record begins with three lengths and kinds of 16 bits and its name of 16 characters;
// the numbers follow at the next multiple of four.
constexpr std::size_t kNumbersOffset = 40;

}  // namespace

// Read from the program's own resources: the library with functions for such records would be
// looked for in the program's folder first.
ProgramVersion OwnVersion() {
    const HMODULE program = GetModuleHandleW(nullptr);
    const HRSRC record =
        FindResourceW(program, MAKEINTRESOURCEW(VS_VERSION_INFO), MAKEINTRESOURCEW(16));
    if (record == nullptr) return {};
    VS_FIXEDFILEINFO numbers{};
    if (SizeofResource(program, record) < kNumbersOffset + sizeof numbers) return {};
    const auto* bytes = static_cast<const std::byte*>(LockResource(LoadResource(program, record)));
    if (bytes == nullptr) return {};
    std::memcpy(&numbers, bytes + kNumbersOffset, sizeof numbers);
    if (numbers.dwSignature != VS_FFI_SIGNATURE) return {};
    return {HIWORD(numbers.dwFileVersionMS), LOWORD(numbers.dwFileVersionMS),
            HIWORD(numbers.dwFileVersionLS), LOWORD(numbers.dwFileVersionLS)};
}

}  // namespace vw
