#pragma once

#include <cstdint>
#include <string_view>

#include "platform/Date.h"

namespace vw {

/// What a run reports of one item of its list.
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

/// What a backup run asks of the windows above it: to show how it goes, and to end.
class RunHost {
  public:
    RunHost() = default;
    RunHost(const RunHost&) = delete;
    RunHost& operator=(const RunHost&) = delete;
    virtual ~RunHost() = default;

    /// Shows what is being worked on; the report gets "title: message - subMessage".
    virtual void Msg(std::wstring_view title, std::wstring_view message,
                     std::wstring_view subMessage, bool wait, bool close, bool showReport) = 0;

    /// Adds a line to the report of the run.
    virtual void Report(std::wstring_view text, bool wait) = 0;

    /// Adds a line about something unusual to the report, in the language of the program.
    virtual void Notice(std::wstring_view text) { Report(text, false); }

    /// The same about something that counts for the exit code.
    virtual void Failure(std::wstring_view text) { Notice(text); }

    /// One item has got this far. `size` is what there is to copy, for ItemEvent::Copying only.
    virtual void OnItem(ItemEvent, std::wstring_view /*path*/, const ItemSize& /*size*/) {}

    /// The size and the newest date of an item, as the run found them; of a folder those of its
    /// whole tree.
    virtual void OnSurveyed(std::wstring_view /*path*/, std::uint64_t /*bytes*/, Date /*newest*/) {}

    /// One more file of the item has been copied.
    virtual void OnFileCopied(std::uint64_t /*bytes*/) {}

    /// The run has gone through its whole list.
    virtual void BusyHide(bool pause) = 0;

    /// Gives the main window back to the user (true), or takes it (false).
    virtual void Ready(bool flag) = 0;

    /// Called now and then while one large file is copied: repaints and processes messages.
    virtual void DuringCopy() = 0;

    /// Ends the program at once, leaving nothing in the notification area.
    [[noreturn]] virtual void EndAtOnce() = 0;
};

}  // namespace vw
