#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Date.h"
#include "tests/support/TempTree.h"

namespace vw::test {

/// Looks through a whole destination for copies under a wrong name. It has every state that the
/// items of a test ever had, and reads the disk alone: names, comments and contents.
///
/// What it holds to be true after any failure, kill or second run:
/// - the comment beside a copy names the folder and the date of what the copy holds;
/// - a copy holds a state of an item that its name belongs to, in one series of a file no states of
///   two files;
/// - a copy that is less than such a state has a comment that marks it as incomplete.
class DestinationChecker {
  public:
    explicit DestinationChecker(std::wstring destination);

    /// Keeps the present state of an item as the list names it ("C:\Work\", "C:\Work\*", a file).
    /// An item that does not exist adds nothing.
    void Learn(std::wstring_view item);
    void LearnAll(const std::vector<std::wstring>& items);

    /// Keeps a state that the item need not have now: what is below it; of a file the node "".
    /// `newest` is the date that its comment states; 0 for any.
    void LearnState(std::wstring_view item, Tree content, Date newest);

    /// Also allows copies without comments, and with numbers above 1, that are less than a state:
    /// what a cancel or an unreadable file left and later runs moved up.
    void AllowPartialOlderCopies() { allowsPartialOlder_ = true; }

    /// One line for each violation; empty when there is none.
    [[nodiscard]] std::string Violations() const;

  private:
    struct State {
        Tree content;
        Date newest = kNoDate;
    };
    struct Item {
        std::wstring path;    ///< without the "\*" of a rule
        std::wstring folder;  ///< that comments name
        bool isFile = false;
        std::vector<State> states;
    };
    struct Copy;

    Item& Known(std::wstring_view item);
    static bool IsContainer(const std::wstring& path, const std::map<std::wstring, Copy>& copies);
    bool CheckCopy(const Copy& copy, std::map<std::wstring, std::wstring>& owners,
                   std::string& violations) const;

    std::wstring destination_;
    std::vector<Item> items_;
    bool allowsPartialOlder_ = false;
};

}  // namespace vw::test
