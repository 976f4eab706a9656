#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "engine/CPackage.h"
#include "platform/Handle.h"
#include "platform/ProgramControl.h"
#include "platform/ProgramState.h"
#include "platform/ProgressReporter.h"
#include "tests/support/TempTree.h"
#include "tests/support/TestEnvironment.h"

namespace vw::test {

/// Texts in order, each at most a line.
using Lines = std::vector<std::wstring>;

[[nodiscard]] Lines operator+(Lines first, const Lines& second);

/// What is in a folder: relative path to a file's bytes, or to kFolder.
using Listing = std::map<std::wstring, std::string>;
inline constexpr const char* kFolder = "<folder>";

/// One Msg as the engine gave it.
struct ShownMessage {
    std::wstring title;
    std::wstring message;

    friend bool operator==(const ShownMessage&, const ShownMessage&) = default;
};

/// Keeps what a run shows, reports and asks, in one log.
class RecordingHost final : public ProgressReporter, public ProgramControl, public ErrorSink {
  public:
    /// `root` is written as "~" in the log; errors go on to `errors`.
    RecordingHost(std::wstring root, ErrorSink& errors, const ExitStatus& exitStatus);

    void Msg(std::wstring_view title, std::wstring_view message) override;
    void Report(std::wstring_view text, bool wait) override;
    void BusyHide(bool pause) override;
    void Ready(bool flag) override;
    void frmUnload() override { log.emplace_back(L"[frmUnload]"); }
    void DuringCopy() override { ++repaints; }
    void OnItem(ItemEvent event, std::wstring_view path, const ItemSize& size) override;
    void OnItemStats(std::wstring_view path, std::uint64_t bytes, Date newest) override;
    void OnFileCopied(std::uint64_t bytes) override;
    [[noreturn]] void EndAtOnce() override;
    void Report(const Procedure& where, const RuntimeError& error) override;

    /// `text` with "~" for the root.
    [[nodiscard]] std::wstring Short(std::wstring_view text) const;

    Lines log;
    std::vector<ShownMessage> messages;
    int repaints = 0;
    Lines events;  ///< what OnItem and OnFileCopied were called with
    Lines totals;  ///< what OnItemStats was called with

  private:
    std::wstring root_;
    ErrorSink& errors_;
    const ExitStatus& exitStatus_;
};

/// A drive that can be smaller, or of another kind, than the real one.
class DriveDouble : public ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;

    std::optional<FileInfo> Stat(std::wstring_view path) override;
    std::uint64_t FreeSpace(std::wstring_view folder) override;
    DriveType DriveTypeOf(std::wstring_view path) override;
    void List(std::wstring_view folder, const EntryVisitor& visitor) override;
    void Rename(std::wstring_view from, std::wstring_view to) override;
    void Copy(std::wstring_view from, std::wstring_view to, const CopyProgress& progress) override;

    std::optional<DriveType> kind;
    std::map<std::wstring, std::uint64_t> freeBytes;  ///< by folder
    Lines asked;                                      ///< folders whose free space was asked
    std::set<std::wstring> shownEmpty;                ///< folders that show no entries
    std::set<std::wstring> held;                      ///< what may not be moved
    std::uint32_t copyCode = 0;  ///< of the system: every copying fails with it
    /// Marks that the disk here does not have, by file name.
    std::map<std::wstring, std::function<void(FileInfo&)>> marks;

  private:
    void Mark(std::wstring_view name, FileInfo& facts) const;
};

/// What came of one run.
struct RunResult {
    Lines lines;                    ///< the log, see EngineFixture::Run
    std::vector<ToldError> errors;  ///< told meanwhile
    int exitCode = 0;
    bool ended = false;  ///< the run ended the program
    bool died = false;   ///< the process died, by a plan of the faulty file system
};

/// A world with a backup engine in it: a fresh folder with sources and the destination "Store", a
/// list, and a log of all that a run shows. The disk is the real one, with faults on request.
class EngineFixture : public TestEnvironment {
  public:
    EngineFixture();

    /// A path below the world's folder.
    [[nodiscard]] std::wstring Path(std::wstring_view relative = {}) const {
        return tree.Path(relative);
    }
    /// A path in the destination.
    [[nodiscard]] std::wstring Store(std::wstring_view name = {}) const;

    /// Writes the list that the next runs use: the destination, the count, the items. Items are
    /// relative to the world's folder unless they hold a ":".
    void List(const Lines& items, int copies = 3) const;
    /// The same from the list's own text (in code page 1256); "~" means the world's folder.
    void ListText(std::wstring_view text) const;

    /// BackupAll with a fresh engine, as a new process would have it. The log has a line for each
    /// report ("> " before a path line), "* " and the message for each Msg, "! number procedure
    /// path" for each error reported, and "[...]" for the other verbs. The errors are taken.
    RunResult Run();
    /// The same for any work with an engine.
    RunResult With(const std::function<void(CPackage&)>& work);

    /// The list's one item backed up: the log must be `expected` and the line of BusyHide.
    void ExpectRun(const Lines& expected);

    /// All that is in the destination but comment files.
    [[nodiscard]] Listing Copies() const;
    /// The names of all comment files in the destination.
    [[nodiscard]] std::set<std::wstring> Comments() const;
    /// The text of a copy's comment without its line end.
    [[nodiscard]] std::string Comment(std::wstring_view copyName) const;

    TempTree tree;
    DriveDouble drive{files};
    RecordingHost host;
    /// The environment's, with the drive and the host: what the engine works with.
    // cppcheck-suppress duplInheritedMember
    System system;
    ProgramState state;
};

/// What a run shows for an item that is copied: a file item, or a folder's files in order.
[[nodiscard]] Lines BackedUp(const std::wstring& item, const Lines& files);
/// What a run shows for a file item that is copied.
[[nodiscard]] Lines BackedUp(const std::wstring& item);
/// What a run shows for an item that did not change.
[[nodiscard]] Lines NoChange(const std::wstring& item);
/// What a run shows for an item that is not there.
[[nodiscard]] Lines Missing(const std::wstring& item);
/// What a run shows for an item that must not be copied to this destination.
[[nodiscard]] Lines Refused(const std::wstring& item);
/// The log's last line when a run has gone through its whole list.
inline const Lines kDone{L"[BusyHide true]"};

/// A date in January 2010, `step` times a good minute after its first second: no test meets a
/// change of the clocks.
[[nodiscard]] DateParts Day(int step);

/// Keeps a file or folder open so that nobody else may read, rename or delete it.
[[nodiscard]] FileHandle HoldOpen(const std::wstring& path);
/// Keeps it open so that others may read it, but not rename or delete it.
[[nodiscard]] FileHandle HoldInPlace(const std::wstring& path);

/// Sets the part of the file's last-write time below a second, in 100 ns.
void SetPartOfSecond(const std::wstring& file, unsigned ticks);

/// Makes a file so long without writing to it; false when the disk has no files with holes.
[[nodiscard]] bool MakeLong(const std::wstring& file, std::uint64_t size);

/// Text in UTF-8, for the messages of tests.
[[nodiscard]] std::string Joined(const Lines& lines);

}  // namespace vw::test
