#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/RawRegistry.h"

namespace vw::test {

/// The real registry, whose calls can be made to fail with a status. Remembers what was asked.
class FaultyRegistry final : public RawRegistry {
  public:
    // What each call answers instead of doing anything; nothing lets it through.
    std::optional<LSTATUS> createKeyFails;
    std::optional<LSTATUS> setValueFails;
    std::optional<LSTATUS> deleteValueFails;
    std::optional<LSTATUS> deleteTreeFails;

    /// Called before each query with its number (from 1); a status replaces the real answer.
    std::function<std::optional<LSTATUS>(int)> onQuery;

    /// The paths that were opened, in order.
    std::vector<std::string> opened;
    /// The keys that were handed out.
    std::vector<HKEY> keys;
    /// The names of the keys that were deleted with all below them.
    std::vector<std::string> deletedTrees;
    int queries = 0;
    int changes = 0;

    LSTATUS CreateKey(HKEY root, const std::string& path, RegistryKey& key) override {
        opened.push_back(path);
        if (createKeyFails) return *createKeyFails;
        const LSTATUS status = real_.CreateKey(root, path, key);
        if (status == ERROR_SUCCESS) keys.push_back(key.Get());
        return status;
    }

    LSTATUS QueryValue(HKEY key, const std::string& name, char* data, DWORD& size) override {
        ++queries;
        if (onQuery) {
            if (const auto status = onQuery(queries)) return *status;
        }
        return real_.QueryValue(key, name, data, size);
    }

    LSTATUS SetValue(HKEY key, const std::string& name, DWORD type,
                     std::string_view bytes) override {
        ++changes;
        return setValueFails ? *setValueFails : real_.SetValue(key, name, type, bytes);
    }

    LSTATUS DeleteValue(HKEY key, const std::string& name) override {
        ++changes;
        return deleteValueFails ? *deleteValueFails : real_.DeleteValue(key, name);
    }

    LSTATUS DeleteTree(HKEY parent, const std::string& name) override {
        ++changes;
        deletedTrees.push_back(name);
        // An empty name is the parent itself: a test must never empty a root of this machine.
        if (name.empty()) return ERROR_ACCESS_DENIED;
        return deleteTreeFails ? *deleteTreeFails : real_.DeleteTree(parent, name);
    }

  private:
    SystemRegistry real_;
};

}  // namespace vw::test
