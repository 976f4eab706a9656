#pragma once

#include <cstdint>
#include <string_view>

#include "platform/Date.h"

namespace vw {

/// What a backup run reports of one item of its list.
enum class ItemEvent {
    Started,    ///< its turn has come
    Missing,    ///< it does not exist
    Refused,    ///< it holds the destination or lies in it
    Unchanged,  ///< copy 1 is up to date
    Copying,    ///< a new copy is being written
    Copied,     ///< the new copy is in its place, with the files that could be read
};

/// How much of an item a copy takes.
struct ItemSize {
    std::uint64_t files = 0;
    std::uint64_t bytes = 0;
};

/// Receives the progress of long work: a backup run, a restore, a cleaning. The busy dialog, the
/// report of a silent run and the console implement it.
class ProgressReporter {
  public:
    ProgressReporter() = default;
    ProgressReporter(const ProgressReporter&) = delete;
    ProgressReporter& operator=(const ProgressReporter&) = delete;
    virtual ~ProgressReporter() = default;

    /// Shows what is being worked on. The report gets a line of it.
    virtual void Msg(std::wstring_view title, std::wstring_view message) = 0;

    /// Adds a line to the report. With `wait` it is shown for a moment, except in a run, whose end
    /// waits once for all of its lines.
    virtual void Report(std::wstring_view text, bool wait) = 0;

    /// Adds a line about something unusual to the report, in the language of the program.
    virtual void Notice(std::wstring_view text) { Report(text, false); }

    /// The same about something that counts for the exit code.
    virtual void Failure(std::wstring_view text) { Notice(text); }

    /// One item has got this far. `size` is what there is to copy, for ItemEvent::Copying only.
    virtual void OnItem(ItemEvent, std::wstring_view /*path*/, const ItemSize& /*size*/) {}

    /// The size and the newest date of an item, as the run found them; of a folder those of its
    /// whole tree.
    virtual void OnItemStats(std::wstring_view /*path*/, std::uint64_t /*bytes*/, Date /*newest*/) {
    }

    /// One more file of the item has been copied.
    virtual void OnFileCopied(std::uint64_t /*bytes*/) {}

    /// Called now and then while one large file is copied: repaints and processes messages.
    virtual void DuringCopy() {}

    /// The work is over. With `pause` its report is shown for a moment.
    virtual void BusyHide(bool pause) = 0;

    /// Whether the user sees the progress, or an icon in its place.
    [[nodiscard]] virtual bool IsShown() const { return false; }
};

}  // namespace vw
