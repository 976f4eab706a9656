// vw check where the rules of a date's own year give another date than those of the present year,
// by which earlier versions wrote their comments. Wine has no such years, so a double replaces the
// disk.

#include "tests/console/VerbTest.h"
#include "tests/support/OtherRules.h"

namespace vw::test {
namespace {

class CheckRules : public VerbTest {
  protected:
    CheckRules() {
        tree.File(L"a.txt", "a", Day(1));
        tree.File(L"Work\\b.txt", "b", Day(2));
        tree.File(L"Work\\Sub\\c.txt", "c", Day(3));
        tree.File(L"Rule\\d.txt", "d", Day(4));
        tree.File(L"Gone\\e.txt", "e", Day(5));
        MakeList({L"a.txt", L"Work\\", L"Rule\\*", L"Gone\\"});
        RunsTo(0, L"backup " + List());
        // The copies of one item are checked without it.
        MakeList({L"a.txt", L"Work\\", L"Rule\\*"});
        shown = &rules;
    }

    OtherRules rules{disk};
};

TEST_F(CheckRules, CommentsByThePresentYear_AreNoFindings) { EXPECT_EQ(RunCheck(), 0); }

TEST_F(CheckRules, CommentsOfAnotherDate_AreFindings) {
    for (const wchar_t* const copy :
         {L"a«0001».txt", L"Work«0001»", L"Rule«0001»", L"Gone«0001»"}) {
        const std::wstring comment = Stored(copy) + L".vwc";
        const std::string before = ReadBytes(comment);
        std::string changed = before;
        changed.replace(changed.find("2010"), 4, "2009");
        tree.File(comment, changed);
        EXPECT_EQ(RunCheck(), 1) << "an older date: " << comment.c_str();
        tree.File(comment, before);
    }
}

// A change that no rule of dates can see is a finding under both.
TEST_F(CheckRules, ChangeUnderAnUnchangedDate_IsAFinding) {
    tree.File(L"Work\\b.txt", "longer", Day(2));
    EXPECT_EQ(RunCheck(), 1);
}

}  // namespace
}  // namespace vw::test
