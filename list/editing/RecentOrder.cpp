#include "list/editing/RecentOrder.h"

#include "platform/TextCase.h"

namespace vw {

int RecentPosition(const RecentPaths& paths, std::wstring_view path) {
    for (std::size_t i = 0; i < paths.size(); ++i) {
        if (EqualNoCase(paths[i], path)) return static_cast<int>(i) + 1;
    }
    return 0;
}

RecentPaths WithRecentPath(const RecentPaths& paths, std::wstring_view path) {
    const int position = RecentPosition(paths, path);
    const std::size_t place = position == 0 ? paths.size() - 1 : position - 1;
    RecentPaths result = paths;
    for (std::size_t i = place; i > 0; --i) result[i] = paths[i - 1];
    result[0] = path;
    return result;
}

}  // namespace vw
