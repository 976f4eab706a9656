#pragma once

#include <string>
#include <string_view>

#include "platform/Handle.h"
#include "platform/WindowsHeader.h"

namespace vw {

/// The five calls of the registry that CCommonAPI is built on, with the bytes and the status codes
/// of the system: the place where tests let the registry fail.
class RawRegistry {
  public:
    RawRegistry() = default;
    RawRegistry(const RawRegistry&) = delete;
    RawRegistry& operator=(const RawRegistry&) = delete;
    virtual ~RawRegistry() = default;

    /// Opens a key below `root`, making it when it is missing.
    virtual LSTATUS CreateKey(HKEY root, const std::string& path, RegistryKey& key) = 0;

    /// Reads at most `size` bytes of a value into `data`; `size` becomes the size of the value,
    /// also when it was too small (ERROR_MORE_DATA).
    virtual LSTATUS QueryValue(HKEY key, const std::string& name, char* data, DWORD& size) = 0;

    /// Stores the bytes as they are, whatever the type guarantees.
    virtual LSTATUS SetValue(HKEY key, const std::string& name, DWORD type,
                             std::string_view bytes) = 0;

    virtual LSTATUS DeleteValue(HKEY key, const std::string& name) = 0;

    /// Deletes a key with everything below it.
    virtual LSTATUS DeleteTree(HKEY parent, const std::string& name) = 0;
};

/// The registry of this machine, in the ANSI code page of the system.
class SystemRegistry final : public RawRegistry {
  public:
    LSTATUS CreateKey(HKEY root, const std::string& path, RegistryKey& key) override;
    LSTATUS QueryValue(HKEY key, const std::string& name, char* data, DWORD& size) override;
    LSTATUS SetValue(HKEY key, const std::string& name, DWORD type,
                     std::string_view bytes) override;
    LSTATUS DeleteValue(HKEY key, const std::string& name) override;
    LSTATUS DeleteTree(HKEY parent, const std::string& name) override;
};

}  // namespace vw
