// The language of the windows, which is asked for once in the life of an installation.

#include <gmock/gmock.h>

#include "tests/system/ProgramCopy.h"

namespace vw::test {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

class LanguageAtStart : public SystemTest {};

TEST_F(LanguageAtStart, FirstStartWithAWindow_AsksOnce) {
    program.SetSetting(L"Arabic", std::nullopt);
    {
        ProgramRun run(program.With(L"/Author"));
        const Box question = run.WaitForBox();
        EXPECT_EQ(question.title, L"Vualtwright");
        EXPECT_EQ(question.text,
                  L"The current interface language is English. Do you want to change it to "
                  L"Arabic?");
        EXPECT_THAT(question.buttons, ElementsAre(IDYES, IDNO));
        EXPECT_EQ(question.defaultButton, IDNO);
        EXPECT_EQ(program.Setting(L"Arabic"), std::nullopt);
        run.Answer(question, IDNO);
        const Box author = run.WaitForBox();
        EXPECT_EQ(author.title, L"Vaultwright");
        EXPECT_EQ(program.Setting(L"Arabic"), L"0");
        run.Answer(author);
        EXPECT_EQ(run.WaitForEnd(), 0U);
    }
    RunsTo(0, L"/Author");
    EXPECT_THAT(boxes, SizeIs(1));
}

}  // namespace
}  // namespace vw::test
