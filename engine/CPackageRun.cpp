#include <utility>

#include "engine/CPackage.h"
#include "engine/DestinationVisit.h"
#include "engine/RunTexts.h"
#include "list/format/CopiesCount.h"
#include "list/format/FieldReader.h"
#include "list/format/ListLine.h"
#include "list/format/ListText.h"
#include "platform/Clock.h"
#include "platform/EventPump.h"
#include "platform/ExitStatus.h"
#include "platform/ProgramControl.h"
#include "platform/RuntimeError.h"

namespace vw {

namespace {

constexpr std::uint64_t kSilentPatience = 10ULL * 60 * 1000;
constexpr unsigned kLockPollMilliseconds = 100;

/// While it lives, copies go to a folder that the list does not name.
class Elsewhere {
  public:
    Elsewhere(std::wstring& place, std::wstring_view folder)
        : place_(place), before_(std::exchange(place, std::wstring(folder))) {}
    Elsewhere(const Elsewhere&) = delete;
    Elsewhere& operator=(const Elsewhere&) = delete;
    ~Elsewhere() { place_ = before_; }

  private:
    std::wstring& place_;
    std::wstring before_;
};

}  // namespace

// A run does not inherit the refusals and notices of the one before.
void CPackage::StartRun() {
    state_.cancelRequested = false;
    refusedDestination_.clear();
    toldUnlocked_.clear();
    patience_.StartRun();
}

void CPackage::BackupAll() {
    trap_(L"BackupAll", [&] {
        StartRun();
        const std::wstring text = ReadCurrentList();
        const Visit visit(*this);
        LearnList(text);
        FieldReader fields(text);
        while (!fields.AtEnd()) {
            system_.pump.DoEvents();
            if (state_.cancelRequested) {
                system_.exitStatus.Note(error_number::kCancelled);
                program_.Ready(true);
                return;
            }
            const ListLine line = ReadListLine(fields.Next());
            switch (line.kind) {
                case ListLineKind::Destination:
                    state_.BackupTo = line.value;
                    ErrorOnBackupFolderNotExists();
                    break;
                case ListLineKind::CopiesCount:
                    TakeCopiesCount(line.value, state_.copiesCount);
                    break;
                case ListLineKind::Item: {
                    const ItemKind kind = ItemKindOf(line.value);
                    BackUpUnderLock(line.value, kind != ItemKind::File, kind == ItemKind::Folder);
                    // Closing the busy dialog, which is how a cancel comes, has called Ready and
                    // hidden the dialog already.
                    if (state_.cancelRequested) {
                        system_.exitStatus.Note(error_number::kCancelled);
                        return;
                    }
                    break;
                }
                case ListLineKind::Empty:
                    break;
            }
        }
        if (destination_) destination_->RemoveAllLeft();
        progress_.BusyHide(true);
    });
}

// The whole list is known before the first item of it is backed up: names of copies may collide.
void CPackage::LearnList(std::wstring_view text) {
    listed_.Clear();
    FieldReader fields(text);
    std::wstring destination = Target();
    while (!fields.AtEnd()) {
        const ListLine line = ReadListLine(fields.Next());
        if (line.kind == ListLineKind::Destination) destination = line.value;
        if (line.kind == ListLineKind::Item) listed_.Add(destination, line.value);
    }
}

void CPackage::BackupItem(std::wstring_view path) {
    const Visit visit(*this);
    StartRun();
    listed_.Clear();
    BackUpUnderLock(path, false, false);
    if (destination_) destination_->RemoveAllLeft();
    if (state_.cancelRequested) system_.exitStatus.Note(error_number::kCancelled);
}

void CPackage::BackUpUnderLock(std::wstring_view path, bool isFolder, bool subFolders) {
    progress_.OnItem(ItemEvent::Started, path, {});
    ErrorOnBackupFolderNotExists();
    Entrance entrance = Entrance::Refused;
    trap_(L"BackupPath", [&] { entrance = EnterDestination(); });
    if (entrance != Entrance::Entered) return;
    const std::int16_t location = LocationID(path);
    if (location >= 0 && !state_.cancelRequested) BackupPath(path, location, isFolder, subFolders);
}

bool CPackage::InDestination(std::wstring_view folder, const std::function<void()>& work) {
    const Elsewhere elsewhere(elsewhere_, folder);
    const Visit visit(*this);
    state_.cancelRequested = false;
    refusedDestination_.clear();
    patience_.StartRun();
    if (EnterDestination() != Entrance::Entered) return false;
    work();
    return true;
}

std::wstring CPackage::ReadCurrentList() {
    if (!system_.files.Look(state_.currentListPath)) {
        system_.files.Write(state_.currentListPath, {}, FileSystem::Flush::Yes);
    }
    return DecodeList(system_.files.Read(state_.currentListPath), system_.ansi);
}

// Two runs on one destination would rotate each other's copies away, so they take turns. A
// destination that could not be had is told once, not again for each of its items.
CPackage::Entrance CPackage::EnterDestination() {
    if (destination_ && destination_->Folder() == Target()) return Entrance::Entered;
    if (destination_ && !state_.cancelRequested) destination_->RemoveAllLeft();
    destination_.reset();
    if (!refusedDestination_.empty() && refusedDestination_ == Target()) {
        return Entrance::Refused;
    }
    refusedDestination_ = Target();
    const Entrance entrance = WaitForDestination();
    if (entrance != Entrance::Refused) refusedDestination_.clear();
    return entrance;
}

CPackage::Entrance CPackage::WaitForDestination() {
    auto destination = std::make_unique<Destination>(system_, Target(), patience_);
    const std::uint64_t start = system_.clock.Milliseconds();
    for (bool told = false; !destination->TryEnter(); told = true) {
        if (!told) Tell(run_text::kWaiting, Target());
        system_.pump.WaitForEvents(kLockPollMilliseconds);
        if (state_.cancelRequested) return Entrance::Cancelled;
        if (state_.silentRun && system_.clock.Milliseconds() - start >= kSilentPatience) {
            system_.exitStatus.Note(error_number::kDestinationBusy);
            progress_.Failure(run_text::kGivenUp.With(state_.arabic, Target()));
            return Entrance::Refused;
        }
    }
    if (destination->IsLockedForThisComputerOnly() && toldUnlocked_ != Target()) {
        toldUnlocked_ = Target();
        Tell(run_text::kOneComputerOnly, Target());
    }
    destination_ = std::move(destination);
    return Entrance::Entered;
}

}  // namespace vw
