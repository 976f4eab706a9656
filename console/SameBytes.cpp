#include <algorithm>
#include <cstring>
#include <vector>

#include "console/TreeComparison.h"
#include "platform/Handle.h"
#include "platform/SystemError.h"
#include "platform/SystemPath.h"
#include "platform/WindowsHeader.h"

namespace vw {
namespace {

constexpr std::size_t kPieceBytes = std::size_t{256} * 1024;

FileHandle Open(std::wstring_view path) {
    // Whoever wants to rename or delete the file meanwhile may do so.
    FileHandle file(CreateFileW(SystemPath(path).c_str(), GENERIC_READ,
                                FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    if (!file) RaiseLast(path);
    return file;
}

// Fewer bytes than asked for only at the end of the file.
std::size_t ReadPiece(const FileHandle& file, char* piece, std::size_t size,
                      std::wstring_view path) {
    std::size_t filled = 0;
    while (filled < size) {
        DWORD count = 0;
        if (ReadFile(file.Get(), piece + filled, static_cast<DWORD>(size - filled), &count,
                     nullptr) == 0) {
            RaiseLast(path);
        }
        if (count == 0) break;
        filled += count;
    }
    return filled;
}

}  // namespace

bool HasSameBytes(std::wstring_view first, std::wstring_view second, std::uint64_t size,
                  const std::function<void()>& yield) {
    static std::vector<char> pieces(2 * kPieceBytes);
    const FileHandle firstFile = Open(first);
    const FileHandle secondFile = Open(second);
    while (size > 0) {
        const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(size, kPieceBytes));
        const std::size_t count = ReadPiece(firstFile, pieces.data(), wanted, first);
        const std::size_t other =
            ReadPiece(secondFile, pieces.data() + kPieceBytes, wanted, second);
        if (count != wanted || other != wanted) return false;
        if (std::memcmp(pieces.data(), pieces.data() + kPieceBytes, wanted) != 0) return false;
        size -= wanted;
        yield();
    }
    return true;
}

}  // namespace vw
