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
DWORD ReadPiece(const FileHandle& file, std::vector<char>& piece, std::wstring_view path) {
    DWORD filled = 0;
    while (filled < piece.size()) {
        DWORD count = 0;
        if (ReadFile(file.Get(), piece.data() + filled, static_cast<DWORD>(piece.size() - filled),
                     &count, nullptr) == 0) {
            RaiseLast(path);
        }
        if (count == 0) break;
        filled += count;
    }
    return filled;
}

}  // namespace

bool HasSameBytes(std::wstring_view first, std::wstring_view second,
                  const std::function<void()>& yield) {
    static std::vector<char> firstPiece(kPieceBytes);
    static std::vector<char> secondPiece(kPieceBytes);
    const FileHandle firstFile = Open(first);
    const FileHandle secondFile = Open(second);
    for (;;) {
        const DWORD count = ReadPiece(firstFile, firstPiece, first);
        if (count != ReadPiece(secondFile, secondPiece, second)) return false;
        if (std::memcmp(firstPiece.data(), secondPiece.data(), count) != 0) return false;
        if (count < firstPiece.size()) return true;
        yield();
    }
}

}  // namespace vw
