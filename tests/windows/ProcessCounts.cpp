#include "tests/windows/ProcessCounts.h"

#include <array>
#include <cstdint>
#include <vector>

#include "platform/Handle.h"
// Needs windows.h before it.
#include <psapi.h>

namespace vw::test {
namespace {

using QuerySystem = LONG(WINAPI*)(ULONG, void*, ULONG, ULONG*);
using QueryProcess = LONG(WINAPI*)(HANDLE, ULONG, void*, ULONG, ULONG*);

template <typename Function>
Function FromNtdll(const char* name) {
    const FARPROC function = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), name);
    return reinterpret_cast<Function>(reinterpret_cast<void*>(function));
}

// The system's table of all handles, where the simple question is answered with none.
int HandlesInTable(DWORD process) {
    constexpr ULONG kExtendedHandleInformation = 64;
    struct Entry {
        void* object;
        ULONG_PTR process;
        ULONG_PTR handle;
        ULONG access;
        USHORT backTrace;
        USHORT type;
        ULONG attributes;
        ULONG reserved;
    };
    struct Table {
        ULONG_PTR count;
        ULONG_PTR reserved;
        std::array<Entry, 100'000> entries;
    };
    std::vector<Table> table(1);
    const auto query = FromNtdll<QuerySystem>("NtQuerySystemInformation");
    if (query(kExtendedHandleInformation, table.data(), sizeof(Table), nullptr) < 0) return 0;
    int count = 0;
    for (ULONG_PTR i = 0; i < table[0].count; ++i) {
        if (table[0].entries[i].process == process) ++count;
    }
    return count;
}

// The process's own table of what it draws with, likewise.
int DrawingObjectsInTable(HANDLE process) {
    constexpr std::size_t kPlaceOfTable = 0xF8;
    struct Entry {
        std::uint64_t object;
        std::uint32_t owner;
        std::uint16_t unique;
        std::uint8_t type;
        std::uint8_t flags;
        std::uint64_t user;
    };
    struct Facts {
        void* exitStatus;
        std::byte* block;
        std::array<void*, 4> rest;
    } facts{};
    const auto query = FromNtdll<QueryProcess>("NtQueryInformationProcess");
    if (query(process, 0, &facts, sizeof facts, nullptr) < 0) return 0;
    void* address = nullptr;
    std::vector<Entry> table(0x4000);
    if (ReadProcessMemory(process, facts.block + kPlaceOfTable, &address, sizeof address,
                          nullptr) == 0 ||
        ReadProcessMemory(process, address, table.data(), table.size() * sizeof(Entry), nullptr) ==
            0) {
        return 0;
    }
    int count = 0;
    for (const Entry& entry : table) count += entry.type != 0 ? 1 : 0;
    return count;
}

// Likewise counted by making: all processes take them from one table of this size.
int TakenWindowObjects() {
    constexpr int kTable = 0x8000;
    std::vector<HACCEL> made;
    ACCEL key{FVIRTKEY, VK_F1, 1};
    while (made.size() < kTable) {
        const HACCEL keys = CreateAcceleratorTableW(&key, 1);
        if (keys == nullptr) break;
        made.push_back(keys);
    }
    for (const HACCEL keys : made) DestroyAcceleratorTable(keys);
    return kTable - static_cast<int>(made.size());
}

}  // namespace

ProcessCounts ProcessCounts::Of(DWORD process) {
    const KernelHandle handle(
        OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, process));
    ProcessCounts counts;
    DWORD handles = 0;
    GetProcessHandleCount(handle.Get(), &handles);
    counts.handles = handles != 0 ? static_cast<int>(handles) : HandlesInTable(process);
    counts.drawing = static_cast<int>(GetGuiResources(handle.Get(), GR_GDIOBJECTS));
    if (counts.drawing == 0) counts.drawing = DrawingObjectsInTable(handle.Get());
    counts.windows = static_cast<int>(GetGuiResources(handle.Get(), GR_USEROBJECTS));
    if (counts.windows == 0) counts.windows = TakenWindowObjects();
    PROCESS_MEMORY_COUNTERS memory{};
    memory.cb = sizeof memory;
    GetProcessMemoryInfo(handle.Get(), &memory, sizeof memory);
    counts.memory = memory.PagefileUsage;
    return counts;
}

std::ostream& operator<<(std::ostream& stream, const ProcessCounts& counts) {
    return stream << counts.handles << " handles, " << counts.drawing << " to draw with, "
                  << counts.windows << " windows, " << counts.memory / 1024 << " KiB";
}

}  // namespace vw::test
