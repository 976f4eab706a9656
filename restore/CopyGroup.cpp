#include "restore/CopyGroup.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "engine/CommentLine.h"
#include "engine/CopyName.h"
#include "fsutil/PathText.h"
#include "platform/TextCase.h"

namespace vw {
namespace {

// A name holds no "|", so the two parts never run into each other.
std::wstring KeyOf(std::wstring_view origin, int location) {
    return UpperCase(origin) + L"|" + std::to_wstring(location);
}

}  // namespace

bool CopyGroup::MayHoldOthers() const {
    return !hasComment && !MFileDosShell::CFileExt(origin).empty() &&
           std::ranges::any_of(copies, &CopyEntry::isFolder);
}

std::vector<CopyGroup> GroupCopies(std::vector<CopyEntry> copies,
                                   const std::vector<std::wstring>& comments) {
    std::unordered_set<std::wstring> commentedPaths;
    std::unordered_set<std::wstring> commentedSeries;
    for (const std::wstring& comment : comments) {
        const std::wstring path = comment.substr(0, comment.size() - kCommentExtension.size());
        const std::wstring name = MFileDosShell::CFileName(path);
        commentedPaths.insert(UpperCase(path));
        const CopyNameParts parts = ParseCopyName(name);
        commentedSeries.insert(KeyOf(parts.origin, parts.location));
    }
    std::vector<CopyGroup> series;
    std::unordered_map<std::wstring, std::size_t> places;
    for (CopyEntry& copy : copies) {
        copy.hasComment = commentedPaths.contains(UpperCase(copy.path));
        const std::wstring name = MFileDosShell::CFileName(copy.path);
        const CopyNameParts parts = ParseCopyName(name);
        const std::wstring key = KeyOf(parts.origin, parts.location);
        const auto [place, isNew] = places.emplace(key, series.size());
        if (isNew) {
            series.push_back({.origin = parts.origin,
                              .location = parts.location,
                              .copies = {},
                              .hasComment = commentedSeries.contains(key)});
        }
        series[place->second].copies.push_back(std::move(copy));
    }
    return series;
}

}  // namespace vw
