#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vw {

/// The copies that a process that is gone took out of their series and did not remove: the rotation
/// that they left for was cut off.
class DisplacedCopies {
  public:
    /// Removes an entry of the destination. Throws nothing when it cannot be removed.
    using RemoveEntry = std::function<void(std::wstring_view entryName)>;

    explicit DisplacedCopies(RemoveEntry removeEntry) : removeEntry_(std::move(removeEntry)) {}

    /// Adds an entry found in the destination. `item` and `copy` are the keys in its name.
    void Add(std::wstring_view entryName, std::uint64_t item, std::uint64_t copy);

    /// Whether the copy `copyPath` of an item is among them.
    [[nodiscard]] bool Contains(std::wstring_view itemPath, std::wstring_view copyPath) const;

    /// Keeps those of an item for a later run.
    void Keep(std::wstring_view itemPath);

    /// Removes those of an item, after its rotation is complete.
    void Remove(std::wstring_view itemPath);

    /// Removes all but those that are kept.
    void RemoveAll();

  private:
    struct Entry {
        std::wstring name;
        std::uint64_t item = 0;
        std::uint64_t copy = 0;
        bool isKept = false;
    };

    RemoveEntry removeEntry_;
    std::vector<Entry> entries_;
};

}  // namespace vw
