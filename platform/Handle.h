#pragma once

#include <utility>

#include "platform/WindowsHeader.h"

namespace vw {

/// Owns one handle of the system and closes it once. `Traits` gives its type, its empty value
/// and how it is closed.
template <class Traits>
class UniqueHandle {
  public:
    using Type = typename Traits::Type;

    UniqueHandle() noexcept = default;
    explicit UniqueHandle(Type handle) noexcept : handle_(handle) {}
    UniqueHandle(UniqueHandle&& other) noexcept
        : handle_(std::exchange(other.handle_, Traits::Empty())) {}
    UniqueHandle& operator=(UniqueHandle&& other) noexcept {
        if (this != &other) Reset(std::exchange(other.handle_, Traits::Empty()));
        return *this;
    }
    UniqueHandle(const UniqueHandle&) = delete;
    UniqueHandle& operator=(const UniqueHandle&) = delete;
    ~UniqueHandle() { Reset(); }

    [[nodiscard]] Type Get() const noexcept { return handle_; }
    [[nodiscard]] explicit operator bool() const noexcept { return handle_ != Traits::Empty(); }

    /// Hands the handle over to somebody else, who closes it.
    [[nodiscard]] Type Release() noexcept { return std::exchange(handle_, Traits::Empty()); }

    void Reset(Type handle = Traits::Empty()) noexcept {
        const Type old = std::exchange(handle_, handle);
        if (old != Traits::Empty()) Traits::Close(old);
    }

  private:
    Type handle_ = Traits::Empty();
};

/// Files: an invalid handle is -1, not null.
struct FileHandleTraits {
    using Type = HANDLE;
    static Type Empty() noexcept { return INVALID_HANDLE_VALUE; }
    static void Close(Type handle) noexcept { CloseHandle(handle); }
};
using FileHandle = UniqueHandle<FileHandleTraits>;

/// Enumerations of a folder.
struct FindHandleTraits {
    using Type = HANDLE;
    static Type Empty() noexcept { return INVALID_HANDLE_VALUE; }
    static void Close(Type handle) noexcept { FindClose(handle); }
};
using FindHandle = UniqueHandle<FindHandleTraits>;

/// Processes, mutexes and other objects of the kernel.
struct KernelHandleTraits {
    using Type = HANDLE;
    static Type Empty() noexcept { return nullptr; }
    static void Close(Type handle) noexcept { CloseHandle(handle); }
};
using KernelHandle = UniqueHandle<KernelHandleTraits>;

/// Keys of the registry.
struct RegistryKeyTraits {
    using Type = HKEY;
    static Type Empty() noexcept { return nullptr; }
    static void Close(Type handle) noexcept { RegCloseKey(handle); }
};
using RegistryKey = UniqueHandle<RegistryKeyTraits>;

}  // namespace vw
