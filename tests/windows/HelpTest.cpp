// The help command, in the real windows.

#include <gmock/gmock.h>

#include "tests/support/OpenedFiles.h"
#include "tests/windows/BackupWindows.h"

namespace vw::test {
namespace {

using testing::IsEmpty;

std::wstring BaseName(const std::wstring& program) {
    const std::wstring name = program.substr(program.rfind(L'\\') + 1);
    return name.substr(0, name.rfind(L'.'));
}

/// A page as the build puts it beside the program: "" for the Arabic one, "en\" for the other.
std::string BuiltPage(const std::wstring& folder) {
    const std::wstring built = BuiltProgram();
    return ReadBytes(built.substr(0, built.rfind(L'\\')) + L"\\Help\\" + folder + BaseName(built) +
                     L".htm");
}

class Help : public BackupWindows {
  protected:
    Help() { WriteDefaultList({letter}); }

    static void ChooseHelp(DrivenProgram& window) {
        window.Choose(ID_mnuHelpHelp);
        EXPECT_THAT(window.Run().Boxes(), IsEmpty());
    }

    /// The page that the help command opens when the program and its pages are in this folder.
    void OpensThePageFrom(const std::wstring& folder, const std::wstring& language) {
        const std::wstring place = program.tree.Folder(folder);
        ProgramStart start = program.With(L"");
        start.program = place + program.Path().substr(program.Folder().size());
        ASSERT_NE(CopyFileW(program.Path().c_str(), start.program.c_str(), TRUE), 0);
        for (const wchar_t* const other : {L"", L"en\\"}) {
            program.tree.File(place + L"\\Help\\" + other + BaseName(start.program) + L".htm",
                              BuiltPage(other));
        }
        DrivenProgram window(start);
        ChooseHelp(window);
        const std::string page = BuiltPage(language);
        EXPECT_TRUE(opened.WaitFor(page.size()) == page);
        window.Close();
    }

    const OpenedFiles opened{program.tree, L".htm"};
};

// Letters that addresses, command lines and the names of copies make something else of.
TEST_F(Help, OpensTheEnglishPageFromAFolderOfAnOddName) {
    OpensThePageFrom(L"a «0001» & %20 #", L"en\\");
}

}  // namespace
}  // namespace vw::test
