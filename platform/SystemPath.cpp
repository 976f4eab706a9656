#include "platform/SystemPath.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "platform/RuntimeError.h"
#include "platform/SystemError.h"
#include "platform/TextCase.h"
#include "platform/WindowsHeader.h"

namespace vw {

namespace {

constexpr std::wstring_view kLongPrefix = L"\\\\?\\";
constexpr std::wstring_view kLongServerPrefix = L"\\\\?\\UNC\\";
constexpr std::wstring_view kDevicePrefix = L"\\\\.\\";
// The system counts the bytes of a path in 16 bits. A longer one must not reach it: what is left of
// its length after an overflow would name something else.
constexpr std::size_t kLongestSystemPath = 32'766;

std::wstring Measured(std::wstring systemPath) {
    if (systemPath.size() > kLongestSystemPath) Throw(error_number::kBadName, systemPath);
    return systemPath;
}

bool IsDriveLetter(wchar_t letter) {
    return (letter >= L'A' && letter <= L'Z') || (letter >= L'a' && letter <= L'z');
}

bool IsDriveAbsolute(std::wstring_view path) {
    return path.size() >= 3 && IsDriveLetter(path[0]) && path[1] == L':' && path[2] == L'\\';
}

// As the current folder, it belongs to the whole process.
std::wstring& NamedFolder() noexcept {
    static std::wstring folder;
    return folder;
}

std::wstring CompletedBySystem(const std::wstring& relative) {
    std::wstring full(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetFullPathNameW(relative.c_str(), static_cast<DWORD>(full.size()),
                                              full.data(), nullptr);
        if (length == 0) RaiseLast(relative);
        const bool fits = length < full.size();
        full.resize(length);
        if (fits) return full;
    }
}

std::wstring Completed(const std::wstring& relative) {
    std::wstring bySystem = CompletedBySystem(relative);
    const std::wstring& folder = NamedFolder();
    if (folder.empty() || bySystem.starts_with(kDevicePrefix)) return bySystem;
    if (folder[1] != L':' && relative.front() == L'\\') return bySystem;
    if (relative.front() == L'\\') return folder.substr(0, 2) + relative;
    if (relative.size() < 2 || relative[1] != L':') return folder + L'\\' + relative;
    // "C:name": each drive has a folder of its own, and only that of this drive is known here.
    const bool sameDrive = EqualNoCase(relative.substr(0, 2), folder.substr(0, 2));
    return sameDrive ? folder + L'\\' + relative.substr(2) : bySystem;
}

// Appends the components of `rest` to `root`, resolving relative steps. The names themselves stay
// as they are: a name that ends in a dot or a blank is a different file.
std::wstring Joined(std::wstring root, std::wstring_view rest) {
    std::vector<std::wstring_view> components;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(L'\\'), rest.size());
        const std::wstring_view name = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (name.empty() || name == L".") continue;
        if (name != L"..") {
            components.push_back(name);
        } else if (!components.empty()) {
            components.pop_back();
        }
    }
    for (const std::wstring_view name : components) {
        if (root.back() != L'\\') root += L'\\';
        root += name;
    }
    return root;
}

std::wstring ServerPath(std::wstring_view path) {
    const std::wstring_view names =
        path.substr(std::min(path.find_first_not_of(L'\\'), path.size()));
    const std::size_t share = names.find(L'\\');
    const std::size_t rest =
        share == std::wstring_view::npos ? share : names.find(L'\\', share + 1);
    std::wstring root = L"\\\\" + std::wstring(names.substr(0, rest));
    return rest == std::wstring_view::npos ? root : Joined(std::move(root), names.substr(rest));
}

// With the separators of the system, and absolute.
std::wstring Resolved(std::wstring_view path) {
    std::wstring text(path);
    std::replace(text.begin(), text.end(), L'/', L'\\');
    return IsDriveAbsolute(text) || text.starts_with(L"\\\\") ? text : Completed(text);
}

}  // namespace

void CompleteRelativePathsIn(std::wstring folder) { NamedFolder() = std::move(folder); }

const std::wstring& FolderOfRelativePaths() noexcept { return NamedFolder(); }

std::wstring AbsolutePath(std::wstring_view path) {
    if (path.empty() || path.find(L'\0') != std::wstring_view::npos) {
        Throw(error_number::kBadName, path);
    }
    if (path.starts_with(kLongPrefix)) return std::wstring(path);
    const std::wstring text = Resolved(path);
    // "NUL", "COM1"...: devices are no files that anyone could back up.
    if (text.starts_with(kDevicePrefix)) Throw(error_number::kBadName, path);
    if (text.starts_with(L"\\\\")) return ServerPath(text);
    return Joined(text.substr(0, 3), std::wstring_view(text).substr(3));
}

std::wstring SystemPath(std::wstring_view path) {
    std::wstring absolute = AbsolutePath(path);
    if (absolute.starts_with(kLongPrefix)) return Measured(std::move(absolute));
    if (absolute.starts_with(L"\\\\")) {
        return Measured(std::wstring(kLongServerPrefix) + absolute.substr(2));
    }
    return Measured(std::wstring(kLongPrefix) + absolute);
}

bool NamesDevice(std::wstring_view path) {
    if (path.empty() || path.starts_with(kLongPrefix)) return false;
    return Resolved(path).starts_with(kDevicePrefix);
}

std::wstring WithoutLongPrefix(std::wstring_view path) {
    if (path.starts_with(kLongServerPrefix)) {
        return L"\\\\" + std::wstring(path.substr(kLongServerPrefix.size()));
    }
    const std::wstring_view rest = path.substr(std::min(path.size(), kLongPrefix.size()));
    return std::wstring(path.starts_with(kLongPrefix) && IsDriveAbsolute(rest) ? rest : path);
}

bool PathContains(std::wstring_view outer, std::wstring_view inner) {
    const auto asFolder = [](std::wstring_view path) {
        std::wstring folder = AbsolutePath(WithoutLongPrefix(path));
        if (!folder.ends_with(L'\\')) folder += L'\\';
        return folder;
    };
    const std::wstring outside = asFolder(outer);
    return EqualNoCase(asFolder(inner).substr(0, outside.size()), outside);
}

}  // namespace vw
