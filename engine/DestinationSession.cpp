#include "engine/DestinationSession.h"

#include <utility>

#include "engine/RunTexts.h"
#include "fsutil/Waking.h"
#include "platform/Clock.h"
#include "platform/ExitStatus.h"
#include "platform/MessageBoxes.h"
#include "platform/MessagePump.h"
#include "platform/RuntimeError.h"

namespace vw {

namespace {

constexpr std::uint64_t kSilentPatience = 10ULL * 60 * 1000;
constexpr unsigned kLockPollMilliseconds = 100;

}  // namespace

DestinationSession::Visit::Visit(DestinationSession& session)
    : session_(session), isOutermost_(!session.isVisiting_) {
    session_.isVisiting_ = true;
}

DestinationSession::Visit::~Visit() {
    if (!isOutermost_) return;
    session_.isVisiting_ = false;
    session_.destination_.reset();
}

DestinationSession::TargetOverride::TargetOverride(DestinationSession& session,
                                                   std::wstring_view folder)
    : session_(session), before_(std::exchange(session.override_, std::wstring(folder))) {}

DestinationSession::TargetOverride::~TargetOverride() { session_.override_ = before_; }

void DestinationSession::StartRun() {
    refusedDestination_.clear();
    reportedUnlocked_.clear();
}

void DestinationSession::RequireFolder() {
    trap_(L"ErrorOnBackupFolderNotExists", [&] {
        const auto isThere = [this] {
            const auto facts = system_.files.Stat(Folder());
            return facts && facts->isFolder;
        };
        if (IsThereAfterWaking(system_, state_.cancel, isThere)) return;
        system_.exitStatus.Note(error_number::kPathNotFound);
        system_.boxes.Show({.text = L"فشلت العملية بسبب عدم توفر مجلد النسخ إلى:\r\n" + Target(),
                            .icon = BoxIcon::Exclamation,
                            .rightToLeft = true});
        program_.EndAtOnce();
    });
}

bool DestinationSession::Contains(std::wstring_view copyPath) {
    if (destination_ && !destination_->MayContain(copyPath)) return false;
    return system_.files.Stat(copyPath).has_value();
}

bool DestinationSession::IsListed(std::wstring_view copyPath) {
    return destination_ && destination_->IsTopEntry(copyPath) ? destination_->MayContain(copyPath)
                                                              : Contains(copyPath);
}

void DestinationSession::MoveEntry(std::wstring_view from, std::wstring_view to,
                                   std::uint64_t patience) {
    patience_.Perform([&] { system_.files.Rename(from, to); }, {}, patience);
    destination_->OnRemoved(from);
    destination_->OnAdded(to);
}

// Two runs on one destination would rotate each other's copies away, so they take turns. A
// destination that could not be entered is reported once, not again for each of its items.
Entrance DestinationSession::Enter() {
    if (destination_ && destination_->Folder() == Target()) return Entrance::Entered;
    if (destination_ && !state_.cancel.IsRequested()) destination_->Displaced().RemoveAll();
    destination_.reset();
    if (!refusedDestination_.empty() && refusedDestination_ == Target()) {
        return Entrance::Refused;
    }
    refusedDestination_ = Target();
    const Entrance entrance = Wait();
    if (entrance != Entrance::Refused) refusedDestination_.clear();
    return entrance;
}

Entrance DestinationSession::Wait() {
    auto destination = std::make_unique<Destination>(system_, Target(), patience_);
    const std::uint64_t start = system_.clock.Milliseconds();
    for (bool told = false; !destination->TryEnter(); told = true) {
        if (!told) Notice(run_text::kWaiting, Target());
        system_.pump.WaitForMessages(kLockPollMilliseconds);
        if (state_.cancel.IsRequested()) return Entrance::Cancelled;
        if (state_.silentRun && system_.clock.Milliseconds() - start >= kSilentPatience) {
            system_.exitStatus.Note(error_number::kDestinationBusy);
            progress_.Failure(RunLine(run_text::kGivenUp, state_.language, Target()));
            return Entrance::Refused;
        }
    }
    if (destination->IsLockedForThisComputerOnly() && reportedUnlocked_ != Target()) {
        reportedUnlocked_ = Target();
        Notice(run_text::kOneComputerOnly, Target());
    }
    destination_ = std::move(destination);
    return Entrance::Entered;
}

}  // namespace vw
