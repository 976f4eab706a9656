#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/TempTree.h"

namespace vw::test {

/// Sources, a list of them and the copies of earlier runs, made to be backed up by a run that is
/// killed. Computes, without the engine, what may be in the vault after a kill at any moment, and
/// what must be there after the next run.
///
/// Every source has a state number, shown by its bytes and its date (day n of January 2024), so
/// that each copy shows which state it holds.
class CrashScenario {
  public:
    enum class History {
        None,        ///< the first run: there are no copies yet
        Full,        ///< as many copies as are kept, so that each new one drives an old one out
        Incomplete,  ///< the same, but of one folder copy 1 misses files that the next run adds
    };

    /// `folder`: an absolute path for the world alone; whatever was there is replaced by Prepare.
    CrashScenario(std::wstring folder, History history);

    /// Makes the world anew: the sources in their newest state, the copies of the states before.
    void Prepare();

    /// Gives every source that changes at all a further state.
    void ChangeSources();

    [[nodiscard]] std::wstring List() const { return folder_ + L"\\List.vwl"; }
    [[nodiscard]] std::wstring Vault() const { return folder_ + L"\\Vault"; }

    /// What is wrong in the vault after a kill, one line each: a copy that is not whole, an old
    /// copy that is gone beyond the rotation that was due, a comment beside the wrong copy, an
    /// entry that nobody can explain. Remembers which new copies exist, for AfterNextRun.
    [[nodiscard]] std::vector<std::wstring> AfterKill();

    /// The same after a run that met one failing call and came to its end with this exit code and
    /// these reports. Every item but one must have its new copy, and a copy that lacks something is
    /// only that of a folder. A run that ended with 0 must have done everything.
    [[nodiscard]] std::vector<std::wstring> AfterFault(int exitCode, std::wstring_view reports);

    /// What is wrong in the vault after the next run, which came to its end: all must be as if no
    /// run had been killed, without any working entry.
    [[nodiscard]] std::vector<std::wstring> AfterNextRun() const;

  private:
    static constexpr int kCopies = 3;  ///< how many the list keeps of each item
    /// The line of a comment whose copy misses files.
    static constexpr const char* kIncompleteMark = "Incomplete\r\n";

    /// One line of the list.
    struct Item {
        std::wstring line;                  ///< relative to the world, with the mark of its kind
        std::vector<std::wstring> entries;  ///< below a folder: files, and folders ending in "\"
        std::size_t size = 0;               ///< of each of its files
        int location = 0;
        bool changes = true;
        bool lacksFiles = false;  ///< copy 1 of the earlier runs does, and is marked

        bool newStands = false;  ///< after the kill: the new copy is ready or in its place
        bool isPartial = false;  ///< after the fault: without some of its files
    };

    [[nodiscard]] std::wstring Source(const Item& item) const;
    [[nodiscard]] static bool IsFolder(const Item& item);
    [[nodiscard]] Tree Content(const Item& item, int state) const;
    [[nodiscard]] std::string Comment(const Item& item, int state) const;
    [[nodiscard]] std::wstring CopyName(const Item& item, int number) const;
    [[nodiscard]] int NewestState(const Item& item) const;
    [[nodiscard]] std::vector<int> StatesBefore() const;
    [[nodiscard]] int StateOf(const Item& item, const Tree& content) const;
    [[nodiscard]] Tree StoredContent(const Item& item, int number, int state) const;
    void CheckDestination(std::vector<std::wstring>& faults) const;
    [[nodiscard]] bool IsPartOfNewest(const Item& item, const Tree& content) const;
    void SettleLocations();
    [[nodiscard]] static bool IsWorkingEntry(const std::wstring& name);
    [[nodiscard]] bool IsDue(const Item& item) const;
    [[nodiscard]] bool ReadyCopyStands(const Tree& vault, const Item& item) const;

    void Write(std::wstring_view path, const Tree& content) const;
    void CheckCopies(const Tree& vault, Item& item, std::vector<std::wstring>& faults) const;
    void CheckComment(const Tree& vault, const Item& item, int newest,
                      std::vector<std::wstring>& faults) const;
    void CheckNames(const Tree& vault, std::vector<std::wstring>& faults) const;

    std::wstring folder_;
    History history_;
    int firstState_;
    int state_;  ///< of the sources that change
    int killedState_ = 0;
    bool mayBePartial_ = false;  ///< what is looked at is what a fault left, not a kill
    std::vector<Item> items_;
    TempTree disk_;  ///< writes to absolute paths too
};

}  // namespace vw::test
