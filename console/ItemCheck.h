#pragma once

#include <memory>
#include <set>
#include <string>

#include "console/ByteComparison.h"
#include "console/ConsoleList.h"
#include "console/TreeComparison.h"

namespace vw {

class CPackage;
class Console;
class Findings;
struct CopyComment;

/// Compares the items of a list with their copies.
class ItemCheck {
  public:
    /// With `content` the bytes of files are compared too.
    ItemCheck(Console& console, CPackage& engine, Findings& findings, bool content);

    /// Checks one item. Throws the error of the disk. Findings about contents may come later.
    void Check(const ConsoleItem& item);

    /// Ends the comparison of contents and writes what is left to say about them.
    void Finish();

    /// The paths, in upper case, of the copies whose comments were looked at.
    [[nodiscard]] const std::set<std::wstring>& CheckedCopies() const noexcept { return checked_; }

  private:
    using Roots = std::shared_ptr<const ComparedRoots>;

    /// What the comparison of an item with its copy 1 has found so far.
    struct Result;

    void CheckAgainst(const ConsoleItem& item, const std::wstring& copy, const FileInfo& facts,
                      const FileInfo& copyFacts);
    [[nodiscard]] Result Compare(const ConsoleItem& item, const std::wstring& copy,
                                 const FileInfo& facts);
    void TakeFolder(const Roots& roots, const ComparedFolder& folder, Result& result);
    void Judge(const ConsoleItem& item, const std::wstring& copy, const CopyComment& comment,
               bool isUnseen, const Result& result);
    void CheckPlace(const ConsoleItem& item, const std::wstring& copy, const std::wstring& place);
    void CheckOlderCopies(const ConsoleItem& item, std::int16_t location);
    void CompareOlder(const ConsoleItem& item, const std::wstring& newer,
                      const std::wstring& older);
    void OnCompared(const ComparedBytes& compared);
    [[nodiscard]] bool IsGone(const ComparedRoots& roots);

    Console& console_;
    CPackage& engine_;
    Findings& findings_;
    bool content_;
    std::set<std::wstring> checked_;
    std::set<std::wstring> gone_;  ///< items and copies that were reported as vanished
    ByteComparison bytes_;
};

}  // namespace vw
