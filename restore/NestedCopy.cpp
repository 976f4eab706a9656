#include "restore/NestedCopy.h"

#include <vector>

#include "engine/CommentLine.h"
#include "fsutil/TreeWalk.h"
#include "platform/FileSystem.h"
#include "platform/TextCase.h"

namespace vw {
namespace {

struct Element {
    std::wstring name;
    bool isFolder = false;
};

bool IsCommentOf(const Element& comment, const Element& element) {
    return !comment.isFolder &&
           EqualNoCase(comment.name, element.name + std::wstring(kCommentExtension));
}

}  // namespace

std::optional<NestedCopy> FindNestedCopy(FileSystem& files, std::wstring_view folder) {
    std::wstring below;
    for (;;) {
        std::vector<Element> elements;
        bool tooMany = false;
        files.List(below.empty() ? std::wstring(folder) : JoinPath(folder, below),
                   [&](const FolderEntry& entry) {
                       tooMany = tooMany || elements.size() == 2;
                       if (!tooMany) elements.push_back({std::wstring(entry.name), entry.isFolder});
                   });
        if (tooMany || elements.empty()) return std::nullopt;
        if (elements.size() == 2) {
            if (IsCommentOf(elements[0], elements[1])) std::swap(elements[0], elements[1]);
            if (!IsCommentOf(elements[1], elements[0])) return std::nullopt;
            const std::wstring& name = elements[0].name;
            return NestedCopy{below.empty() ? name : JoinPath(below, name), elements[0].isFolder};
        }
        if (!elements[0].isFolder) return std::nullopt;
        below = below.empty() ? elements[0].name : JoinPath(below, elements[0].name);
    }
}

}  // namespace vw
