#include "platform/NamedLock.h"

#include <string>

#include "platform/Digits.h"
#include "platform/Hash.h"
#include "platform/SecurityDescriptor.h"
#include "platform/SystemError.h"
#include "platform/SystemPath.h"
#include "platform/TextCase.h"
#include "platform/WindowsHeader.h"

namespace vw {

namespace {

// Everyone on this computer may wait for the lock and take it: the backup of an administrator and
// that of a user must keep apart too.
constexpr const wchar_t* kOpenToEveryone = L"D:(A;;0x100001;;;WD)";
constexpr DWORD kTakeAndWait = SYNCHRONIZE | MUTEX_MODIFY_STATE;

// The name of a kernel object may hold no "\", and its length is limited.
std::wstring ObjectName(std::wstring_view purpose, std::wstring_view path) {
    Fnv64 hash;
    for (const wchar_t unit : UpperCase(AbsolutePath(path))) hash.Add(unit);
    return L"Global\\Vaultwright-" + std::wstring(purpose) + L"-" + ToHex(hash.Value(), 16);
}

}  // namespace

void NamedLock::CloseMutex::operator()(void* mutex) const noexcept { CloseHandle(mutex); }

NamedLock::NamedLock(std::wstring_view purpose, std::wstring_view path) {
    SecurityDescriptor rights(kOpenToEveryone);
    const std::wstring name = ObjectName(purpose, path);
    mutex_.reset(CreateMutexExW(rights.Attributes(), name.c_str(), 0, kTakeAndWait));
    if (!mutex_) RaiseLast(path);
}

NamedLock::~NamedLock() {
    if (held_) ReleaseMutex(mutex_.get());
}

bool NamedLock::TakeWithin(unsigned milliseconds) {
    if (held_) return true;
    const DWORD result = WaitForSingleObject(mutex_.get(), milliseconds);
    held_ = result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;
    return held_;
}

}  // namespace vw
