#include "platform/ParentConsole.h"

#include "platform/Handle.h"

namespace vw::ParentConsole {

namespace {

class Attachment {
  public:
    // The console's user works on in it; what is typed there must not end a backup.
    Attachment() : attached_(AttachConsole(ATTACH_PARENT_PROCESS) != 0) {
        if (attached_) SetConsoleCtrlHandler(nullptr, TRUE);
    }
    ~Attachment() {
        if (attached_) FreeConsole();
    }
    Attachment(const Attachment&) = delete;
    Attachment& operator=(const Attachment&) = delete;

    [[nodiscard]] bool Stands() const noexcept { return attached_; }

  private:
    bool attached_;
};

}  // namespace

bool Exists() { return Attachment().Stands(); }

void Write(std::wstring_view text) {
    const Attachment attachment;
    if (!attachment.Stands()) return;
    const FileHandle screen(CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE,
                                        FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                        0, nullptr));
    DWORD written = 0;
    if (screen) {
        WriteConsoleW(screen.Get(), text.data(), static_cast<DWORD>(text.size()), &written,
                      nullptr);
    }
}

}  // namespace vw::ParentConsole
