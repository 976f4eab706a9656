#include "tests/support/ImportHook.h"

#include <gtest/gtest.h>

#include <cstring>

namespace vw::test {
namespace {

template <class Part>
Part* At(HMODULE module, DWORD offset) {
    return reinterpret_cast<Part*>(reinterpret_cast<BYTE*>(module) + offset);
}

// The place in this program's import table that calls of the function go through.
void** FindSlot(const char* function) {
    const HMODULE program = GetModuleHandleW(nullptr);
    const auto* const dos = At<IMAGE_DOS_HEADER>(program, 0);
    const auto* const headers = At<IMAGE_NT_HEADERS>(program, static_cast<DWORD>(dos->e_lfanew));
    const DWORD imports =
        headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    for (const auto* library = At<IMAGE_IMPORT_DESCRIPTOR>(program, imports); library->Name != 0;
         ++library) {
        const auto* name = At<IMAGE_THUNK_DATA>(program, library->OriginalFirstThunk);
        auto* slot = At<IMAGE_THUNK_DATA>(program, library->FirstThunk);
        for (; name->u1.AddressOfData != 0; ++name, ++slot) {
            if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
            const auto* const imported =
                At<IMAGE_IMPORT_BY_NAME>(program, static_cast<DWORD>(name->u1.AddressOfData));
            if (std::strcmp(imported->Name, function) == 0) {
                return reinterpret_cast<void**>(&slot->u1.Function);
            }
        }
    }
    return nullptr;
}

void Write(void** slot, void* value) {
    DWORD protection = 0;
    VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &protection);
    *slot = value;
    VirtualProtect(slot, sizeof *slot, protection, &protection);
}

}  // namespace

ImportHook::ImportHook(const char* name, void* replacement)
    : ImportHook(FindSlot(name), replacement) {
    if (slot_ == nullptr) ADD_FAILURE() << "this program does not import " << name;
}

ImportHook::ImportHook(void** slot, void* replacement) : slot_(slot) {
    if (slot_ == nullptr) return;
    original_ = *slot_;
    Write(slot_, replacement);
}

ImportHook::~ImportHook() {
    if (slot_ != nullptr) Write(slot_, original_);
}

}  // namespace vw::test
