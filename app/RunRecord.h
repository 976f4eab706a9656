#pragma once

#include <string>
#include <string_view>

#include "platform/Date.h"
#include "platform/Language.h"
#include "platform/ProgressReporter.h"

namespace vw {

/// What became of the items of one backup run, and the texts that say so.
class RunRecord {
  public:
    /// A run begins. `path` is the list or the item that is backed up, `items` how many items there
    /// are where that is known.
    void Begin(std::wstring_view path, int items);

    /// One item has got this far.
    void OnItem(ItemEvent event);

    /// The item that is being backed up has failed, whatever else happens to it.
    void NoteFailure() noexcept;

    /// The run is over. After a cancel the present item and those behind it count as cancelled.
    void End(bool cancelled);

    /// Whether a run has begun and not ended.
    [[nodiscard]] bool IsOpen() const noexcept { return open_; }

    /// Whether an item of the last run failed or was cancelled.
    [[nodiscard]] bool HasFailures() const noexcept { return failed_ + cancelled_ > 0; }

    /// The last line of the run's report: list, time and counts.
    [[nodiscard]] std::wstring ReportLine(Language language, Date now) const;

    /// The same for the status line.
    [[nodiscard]] std::wstring StatusText(Language language, Date now) const;

  private:
    /// How far the present item has got.
    enum class Item { None, Started, Failed, Copied, Unchanged };

    void CountItem(bool cancelled) noexcept;
    [[nodiscard]] std::wstring Counts(Language language) const;

    std::wstring path_;
    int items_ = 0;
    int copied_ = 0;
    int unchanged_ = 0;
    int failed_ = 0;
    int cancelled_ = 0;
    Item item_ = Item::None;
    bool open_ = false;
};

}  // namespace vw
