// The help command, in the real windows. Pages are opened with a program of this test's own, which
// writes down what it is given; so the test sees which pages were opened.

#include <gmock/gmock.h>

#include "tests/support/ScratchRegistry.h"
#include "tests/windows/BackupWindows.h"

namespace vw::test {
namespace {

using testing::HasSubstr;
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
    Help() {
        type_.Set(kPageType);
        WriteValue(HKEY_CLASSES_ROOT, typeKey_.Path(L"shell\\open\\command"), L"",
                   TextValue(L"cmd.exe /c type \"%1\" >>\"" + opened_ + L"\""));
        WriteDefaultList({letter});
    }

    void UseArabic() const {
        program.SetSetting(L"Arabic", L"-1");
        program.SetSetting(L"ArabicPrepared", L"-1");
    }

    /// Puts a built page beside this test's program, under the name that this program goes by.
    void Put(const std::wstring& folder) const {
        program.tree.File(L"Program\\Help\\" + folder + BaseName(program.Path()) + L".htm",
                          BuiltPage(folder));
    }

    /// All pages that were opened, one behind the other, once they have this size.
    [[nodiscard]] std::string WaitForOpened(std::size_t size) const {
        std::string bytes;
        for (int i = 0; i < 400 && bytes.size() < size; ++i) {
            Sleep(50);
            if (Exists(opened_)) bytes = ReadBytes(opened_);
        }
        return bytes;
    }

    static void ChooseHelp(DrivenProgram& window) {
        window.Choose(ID_mnuHelpHelp);
        EXPECT_THAT(window.Run().Boxes(), IsEmpty());
    }

  private:
    static constexpr const wchar_t* kPageType = L"VaultwrightTest.Page";

    const std::wstring opened_ = program.tree.Path(L"opened");
    const SavedValue type_{HKEY_CLASSES_ROOT, L".htm", L""};
    const ScratchKey typeKey_{HKEY_CLASSES_ROOT, kPageType};
};

TEST_F(Help, OpensTheEnglishPageBesideTheProgram) {
    Put(L"");
    Put(L"en\\");
    DrivenProgram window(program.With(L""));
    ChooseHelp(window);
    const std::string page = BuiltPage(L"en\\");
    EXPECT_THAT(page, HasSubstr("<html lang=\"en\" dir=\"ltr\">"));
    EXPECT_TRUE(WaitForOpened(page.size()) == page);
    window.Close();
}

TEST_F(Help, OpensTheArabicPageBesideTheProgram) {
    Put(L"");
    Put(L"en\\");
    UseArabic();
    DrivenProgram window(program.With(L""));
    ChooseHelp(window);
    const std::string page = BuiltPage(L"");
    EXPECT_THAT(page, HasSubstr("<html lang=\"ar\" dir=\"rtl\">"));
    EXPECT_TRUE(WaitForOpened(page.size()) == page);
    window.Close();
}

TEST_F(Help, APageThatIsMissingIsNotReplacedByTheOtherLanguage) {
    Put(L"");
    DrivenProgram window(program.With(L""));
    ChooseHelp(window);
    // What comes later shows that nothing came before.
    Put(L"en\\");
    ChooseHelp(window);
    const std::string page = BuiltPage(L"en\\");
    EXPECT_TRUE(WaitForOpened(page.size()) == page);
    window.Close();
}

}  // namespace
}  // namespace vw::test
