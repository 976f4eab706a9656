#pragma once

#include <set>
#include <string>

#include "console/ConsoleList.h"
#include "console/TreeComparison.h"

namespace vw {

class CPackage;
class Console;
class Findings;
struct StoredComment;

/// Compares the items of a list with their copies.
class ItemCheck {
  public:
    /// With `content` the bytes of files are compared too.
    ItemCheck(Console& console, CPackage& engine, Findings& findings, bool content);

    /// Checks one item. Raises what the disk cannot tell.
    void Check(const ConsoleItem& item);

    /// The paths, in upper case, of the copies whose comments were looked at.
    [[nodiscard]] const std::set<std::wstring>& CheckedCopies() const noexcept { return checked_; }

  private:
    /// What the comparison of an item with its copy 1 has found so far.
    struct Result;

    void CheckAgainst(const ConsoleItem& item, const std::wstring& copy, const FileFacts& facts,
                      const FileFacts& copyFacts);
    [[nodiscard]] Result Compare(const ConsoleItem& item, const std::wstring& copy,
                                 const FileFacts& facts);
    void TakeFolder(const ConsoleItem& item, const std::wstring& copy, const ComparedFolder& folder,
                    Result& result);
    void Judge(const ConsoleItem& item, const std::wstring& copy, const StoredComment& comment,
               Date itemDate, const Result& result);
    void CheckPlace(const ConsoleItem& item, const std::wstring& copy, const std::wstring& place);
    void CheckOlderCopies(const ConsoleItem& item, std::int16_t location);
    void CompareOlder(const ConsoleItem& item, const std::wstring& newer,
                      const std::wstring& older);
    void CompareBytes(const std::wstring& first, const std::wstring& second,
                      const FileFacts& expected);

    Console& console_;
    CPackage& engine_;
    Findings& findings_;
    bool content_;
    std::set<std::wstring> checked_;
};

}  // namespace vw
