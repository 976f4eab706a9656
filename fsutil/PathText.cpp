#include "fsutil/PathText.h"

namespace vw {

std::wstring JoinPath(std::wstring_view folder, std::wstring_view name) {
    std::wstring path(folder);
    if (!path.ends_with(L'\\') && !path.ends_with(L'/')) path += L'\\';
    return path.append(name);
}

}  // namespace vw

namespace vw::MFileDosShell {
namespace {

constexpr std::size_t kNone = std::wstring_view::npos;

std::wstring_view WithoutFinalSeparator(std::wstring_view path) noexcept {
    if (!path.empty() && path.back() == L'\\') {
        path.remove_suffix(1);
    }
    return path;
}

}  // namespace

std::wstring CFileName(std::wstring_view path) {
    path = WithoutFinalSeparator(path);
    const std::size_t separator = path.rfind(L'\\');
    return std::wstring(separator == kNone ? path : path.substr(separator + 1));
}

std::wstring CFileLocation(std::wstring_view path) {
    path = WithoutFinalSeparator(path);
    const std::size_t separator = path.rfind(L'\\');
    return std::wstring(separator == kNone ? std::wstring_view() : path.substr(0, separator));
}

std::wstring DestinationFolder(std::wstring_view destination) {
    std::wstring folder(destination);
    if (folder.size() == 2 && folder.back() == L':') {
        folder += L'\\';
    }
    return folder;
}

std::wstring CFileExt(std::wstring_view path) {
    const std::size_t dot = path.rfind(L'.');
    return std::wstring(dot == kNone ? std::wstring_view() : path.substr(dot));
}

std::wstring CFileFirstName(std::wstring_view path) {
    std::wstring name = CFileName(path);
    const std::size_t dot = name.rfind(L'.');
    if (dot != kNone) {
        name.erase(dot);
    }
    return name;
}

std::wstring WithSeparator(std::wstring_view path) {
    std::wstring text(path);
    if (!text.ends_with(L'\\')) text += L'\\';
    return text;
}

std::wstring& QuoteRmove(std::wstring& text) {
    if (text.size() > 2 && text.front() == L'"' && text.back() == L'"') {
        text.pop_back();
        text.erase(0, 1);
    }
    return text;
}

std::wstring& Quote(std::wstring& text) {
    if (text.empty() || text.front() != L'"') {
        text.insert(0, 1, L'"');
        text.push_back(L'"');
    }
    return text;
}

}  // namespace vw::MFileDosShell
