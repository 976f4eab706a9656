#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/Date.h"
#include "tests/support/TempTree.h"

namespace vw::test {

/// What a user expects of the program, in the simplest possible form: which copies there are after
/// each run, and what the report says. It shares no code with the engine.
class BackupModel {
  public:
    enum class Kind { File, Folder, Rule };

    /// A line of the list; `path` as the list has it.
    struct Line {
        std::wstring path;
        Kind kind = Kind::File;
    };

    /// One thing in the destination under a copy's name.
    struct Copy {
        bool isFile = false;
        Tree content;  ///< of a file: one node with an empty name

        friend bool operator==(const Copy&, const Copy&) = default;
    };

    struct Comment {
        Date date = kNoDate;
        std::wstring location;
    };

    /// The report of one run; messages of single files come in no particular order.
    struct Expected {
        std::vector<std::wstring> report;
        std::vector<std::wstring> messages;
        std::vector<int> errors;
    };

    /// `sources` holds everything below `root` as it is on the disk now.
    Expected Run(const std::wstring& root, const Tree& sources, const std::vector<Line>& list,
                 int count);

    /// Copies by their path in the destination, no final "\".
    std::map<std::wstring, Copy> copies;
    std::map<std::wstring, Comment> comments;

  private:
    void RunLine(const Line& line, int count, Expected& expected);
    [[nodiscard]] int LocationOf(const Line& line) const;
    [[nodiscard]] bool IsNumberOfOther(const Line& line, int location,
                                       const std::wstring& first) const;
    [[nodiscard]] Date DateOfCopy(const std::wstring& name) const;

    std::wstring root_;
    Tree sources_;
};

}  // namespace vw::test
