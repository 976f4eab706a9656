#pragma once

#include <atomic>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Handle.h"
#include "tests/support/ForwardingFileSystem.h"

namespace vw::test {

/// A disk with one more drive, Q:, whose server is gone: a question to it is answered when the test
/// ends. The thread that made this object is that of the windows; what it asks about the drive is
/// written down, and answered at once so that the test goes on.
class DeadServer final : public ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;
    ~DeadServer() override {
        Answer();
        while (open_ > 0) Sleep(1);
    }

    std::vector<std::wstring> askedByWindow;
    std::atomic<int> questions = 0;

    /// The server is there again.
    void Answer() const { SetEvent(answer_.Get()); }

    DriveType DriveTypeOf(std::wstring_view path) override {
        return IsOnServer(path) ? DriveType::Network : ForwardingFileSystem::DriveTypeOf(path);
    }
    std::optional<FileInfo> Stat(std::wstring_view path) override {
        if (!IsOnServer(path)) return ForwardingFileSystem::Stat(path);
        Wait(path);
        return std::nullopt;
    }
    void CreateFolder(std::wstring_view path) override {
        IsOnServer(path) ? Wait(path) : ForwardingFileSystem::CreateFolder(path);
    }
    void List(std::wstring_view folder, const EntryVisitor& visitor) override {
        IsOnServer(folder) ? Wait(folder) : ForwardingFileSystem::List(folder, visitor);
    }

  private:
    static bool IsOnServer(std::wstring_view path) {
        return path.starts_with(L"Q:") || path.starts_with(L"\\\\NAS\\");
    }
    void Wait(std::wstring_view path) {
        constexpr DWORD kLongest = 60'000;
        if (GetCurrentThreadId() == windows_) {
            askedByWindow.emplace_back(path);
            return;
        }
        ++open_;
        ++questions;
        WaitForSingleObject(answer_.Get(), kLongest);
        --open_;
    }

    const DWORD windows_ = GetCurrentThreadId();
    KernelHandle answer_{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    std::atomic<int> open_ = 0;
};

}  // namespace vw::test
