#pragma once

#include <string_view>

namespace vw {

/// The copies that the main window shows beside the backup list.
class RestoreView {
  public:
    RestoreView() = default;
    RestoreView(const RestoreView&) = delete;
    RestoreView& operator=(const RestoreView&) = delete;
    virtual ~RestoreView() = default;

    /// A list was loaded: shows the copies of its destination.
    virtual void ListLoaded(std::wstring_view destination) = 0;

    /// Lists the copies of the destination's drive anew.
    virtual void ListRestoreFiles() = 0;

    /// Selects the row of an item and lists its copies. Has no effect for an item without copies.
    virtual void RestoredPath(std::wstring_view path) = 0;
};

}  // namespace vw
