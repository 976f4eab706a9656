#pragma once

#include <optional>
#include <string_view>

#include "tests/support/ForwardingFileSystem.h"

namespace vw::test {

/// A disk on which the date's own year was an hour ahead of the present one.
class OtherRules final : public ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;

    std::optional<FileInfo> Stat(std::wstring_view path) override {
        auto facts = Inner().Stat(path);
        if (facts) facts->lastWrite += kHour;
        return facts;
    }

    void List(std::wstring_view folder, const EntryVisitor& visitor) override {
        Inner().List(folder, [&](const FolderEntry& entry) {
            FolderEntry shown = entry;
            shown.lastWrite += kHour;
            visitor(shown);
        });
    }

  private:
    static constexpr std::chrono::hours kHour{1};
};

}  // namespace vw::test
