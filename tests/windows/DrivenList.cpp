#include "tests/windows/DrivenList.h"

#include <cstddef>
#include <cstring>

#include "platform/Handle.h"
#include "tests/support/WineBridge.h"
// The common controls' declarations need those of the window system first.
#include <commctrl.h>
#include <shellapi.h>
#include <shlobj.h>

namespace vw::test {
namespace {

constexpr std::size_t kTextUnits = 1024;

/// Memory inside the process of a window, for what its messages point to.
class RemoteMemory {
  public:
    RemoteMemory(HWND window, std::size_t size) {
        DWORD id = 0;
        GetWindowThreadProcessId(window, &id);
        process_ =
            OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, id);
        address_ = static_cast<std::byte*>(
            VirtualAllocEx(process_, nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE));
    }
    ~RemoteMemory() {
        VirtualFreeEx(process_, address_, 0, MEM_RELEASE);
        CloseHandle(process_);
    }
    RemoteMemory(const RemoteMemory&) = delete;
    RemoteMemory& operator=(const RemoteMemory&) = delete;

    [[nodiscard]] std::byte* At(std::size_t offset = 0) const { return address_ + offset; }
    void Write(std::size_t offset, const void* data, std::size_t size) const {
        WriteProcessMemory(process_, At(offset), data, size, nullptr);
    }
    void Read(std::size_t offset, void* data, std::size_t size) const {
        ReadProcessMemory(process_, At(offset), data, size, nullptr);
    }
    [[nodiscard]] std::wstring Text(std::size_t offset) const {
        std::wstring text(kTextUnits, L'\0');
        Read(offset, text.data(), text.size() * sizeof(wchar_t));
        return text.substr(0, text.find(L'\0'));
    }

  private:
    HANDLE process_ = nullptr;
    std::byte* address_ = nullptr;
};

constexpr std::size_t kTextOffset = 256;
constexpr std::size_t kRoom = kTextOffset + (kTextUnits + 1) * sizeof(wchar_t);

}  // namespace

DrivenList::DrivenList(HWND list) : list_(list) {}

int DrivenList::Count() const {
    return static_cast<int>(SendMessageW(list_, LVM_GETITEMCOUNT, 0, 0));
}

std::wstring DrivenList::Text(int row, int column) const {
    const RemoteMemory memory(list_, kRoom);
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = reinterpret_cast<wchar_t*>(memory.At(kTextOffset));
    item.cchTextMax = static_cast<int>(kTextUnits);
    memory.Write(0, &item, sizeof item);
    SendMessageW(list_, LVM_GETITEMTEXTW, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(memory.At()));
    // The control may have put its own buffer in.
    memory.Read(0, &item, sizeof item);
    return memory.Text(
        static_cast<std::size_t>(reinterpret_cast<std::byte*>(item.pszText) - memory.At()));
}

std::vector<std::wstring> DrivenList::Column(int column) const {
    const int count = Count();
    std::vector<std::wstring> texts;
    texts.reserve(static_cast<std::size_t>(count));
    for (int row = 0; row < count; ++row) texts.push_back(Text(row, column));
    return texts;
}

int DrivenList::Selected() const {
    return static_cast<int>(
        SendMessageW(list_, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
}

std::vector<std::wstring> DrivenList::Headers() const {
    const HWND header = reinterpret_cast<HWND>(SendMessageW(list_, LVM_GETHEADER, 0, 0));
    const RemoteMemory memory(list_, kRoom);
    std::vector<std::wstring> texts;
    const auto count = static_cast<int>(SendMessageW(header, HDM_GETITEMCOUNT, 0, 0));
    for (int i = 0; i < count; ++i) {
        HDITEMW item{};
        item.mask = HDI_TEXT;
        item.pszText = reinterpret_cast<wchar_t*>(memory.At(kTextOffset));
        item.cchTextMax = static_cast<int>(kTextUnits);
        memory.Write(0, &item, sizeof item);
        SendMessageW(header, HDM_GETITEMW, static_cast<WPARAM>(i),
                     reinterpret_cast<LPARAM>(memory.At()));
        texts.push_back(memory.Text(kTextOffset));
    }
    return texts;
}

bool DrivenList::HasWarning(int row) const {
    return SendMessageW(list_, LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_OVERLAYMASK) != 0;
}

void DrivenList::Select(int row) const {
    const RemoteMemory memory(list_, sizeof(LVITEMW));
    LVITEMW item{};
    item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    item.state = item.stateMask;
    memory.Write(0, &item, sizeof item);
    SendMessageW(list_, LVM_SETITEMSTATE, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(memory.At()));
}

void DrivenList::Click(int row) const {
    const RemoteMemory memory(list_, sizeof(RECT));
    RECT area{};
    area.left = LVIR_LABEL;
    memory.Write(0, &area, sizeof area);
    SendMessageW(list_, LVM_GETITEMRECT, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(memory.At()));
    memory.Read(0, &area, sizeof area);
    const LPARAM point = MAKELPARAM(area.left + 5, (area.top + area.bottom) / 2);
    PostMessageW(list_, WM_LBUTTONDOWN, MK_LBUTTON, point);
    PostMessageW(list_, WM_LBUTTONUP, 0, point);
}

void DrivenList::ClickColumn(int column) const {
    const HWND header = reinterpret_cast<HWND>(SendMessageW(list_, LVM_GETHEADER, 0, 0));
    const RemoteMemory memory(list_, sizeof(RECT));
    SendMessageW(header, HDM_GETITEMRECT, static_cast<WPARAM>(column),
                 reinterpret_cast<LPARAM>(memory.At()));
    RECT area{};
    memory.Read(0, &area, sizeof area);
    const LPARAM point = MAKELPARAM((area.left + area.right) / 2, (area.top + area.bottom) / 2);
    PostMessageW(header, WM_LBUTTONDOWN, MK_LBUTTON, point);
    PostMessageW(header, WM_LBUTTONUP, 0, point);
}

// The block that a drop brings: a header and the paths, with an empty one behind them. Windows
// hands it to the other process; under Wine it has to be there already, and stays there.
void DrivenList::Drop(const std::vector<std::wstring>& paths) const {
    std::wstring text;
    for (const std::wstring& path : paths) text += path + L'\0';
    text += L'\0';
    DROPFILES header{};
    header.pFiles = sizeof header;
    header.fWide = TRUE;
    std::vector<std::byte> block(sizeof header + text.size() * sizeof(wchar_t));
    std::memcpy(block.data(), &header, sizeof header);
    std::memcpy(block.data() + sizeof header, text.data(), block.size() - sizeof header);
    if (UnderWine()) {
        const RemoteMemory memory(list_, block.size());
        memory.Write(0, block.data(), block.size());
        SendMessageW(list_, WM_DROPFILES, reinterpret_cast<WPARAM>(memory.At()), 0);
        return;
    }
    const HGLOBAL handle = GlobalAlloc(GMEM_MOVEABLE | GMEM_SHARE, block.size());
    std::memcpy(GlobalLock(handle), block.data(), block.size());
    GlobalUnlock(handle);
    PostMessageW(list_, WM_DROPFILES, reinterpret_cast<WPARAM>(handle), 0);
}

}  // namespace vw::test
