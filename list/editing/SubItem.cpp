#include "list/editing/SubItem.h"

#include "ui/ListView.h"

namespace vw {

std::wstring SubItem(const ListView& list, std::wstring_view columnKey, std::optional<int> index) {
    const int row = index ? *index - 1 : list.Selected();
    return row < 0 ? std::wstring() : list.Rows().SubItem(row, columnKey);
}

}  // namespace vw
