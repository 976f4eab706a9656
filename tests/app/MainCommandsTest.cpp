// Which command each button and each menu entry runs.

#include "app/MainCommands.h"
#include "ui/resource.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "tests/ui/FormFixture.h"
#include "ui/ToolBarTable.h"

namespace vw {
namespace {

using test::Narrow;

std::wstring InCapitals(std::wstring text) {
    for (wchar_t& unit : text) {
        if (unit >= L'a' && unit <= L'z') unit = static_cast<wchar_t>(unit - L'a' + L'A');
    }
    return text;
}

std::vector<ToolButtonData> Buttons() {
    std::vector<ToolButtonData> buttons;
    for (const ControlData& control : MainForm().controls) {
        buttons.insert(buttons.end(), control.buttons.begin(), control.buttons.end());
    }
    return buttons;
}

TEST(MainCommands, FindByKey_IgnoresLetterCase) {
    for (const ToolButtonData& button : Buttons()) {
        EXPECT_EQ(MainCommand::FindByKey(InCapitals(std::wstring(button.key))),
                  MainCommand::FindByKey(button.key))
            << Narrow(button.key);
    }
}

TEST(MainCommands, FindByKey_UnknownKey_ReturnsNull) {
    for (const auto* key : {L"", L"EditAdd", L"Delete", L"FileNewer"}) {
        EXPECT_EQ(MainCommand::FindByKey(key), nullptr) << Narrow(key);
    }
    EXPECT_EQ(MainCommand::Find(0), nullptr);
    EXPECT_EQ(MainCommand::Find(ID_mnuViewMethod_4), nullptr) << "a separator";
}

// Nothing that a user can choose is without a command, and no two entries share one. The button
// that opens the selection looks at the list that the user worked in last; it has no entry of its
// own.
TEST(MainCommands, EveryEntryAndButton_HasACommand) {
    std::set<const MainCommand*> commands;
    for (const MenuItemData& entry : MainForm().menu) {
        if (entry.level == 0 || entry.separator) continue;
        const MainCommand* command = MainCommand::Find(entry.id);
        ASSERT_NE(command, nullptr) << Narrow(entry.name);
        EXPECT_TRUE(commands.insert(command).second) << Narrow(entry.name);
    }
    for (const ToolButtonData& button : Buttons()) {
        const MainCommand* command = MainCommand::Find(button.id);
        ASSERT_NE(command, nullptr) << Narrow(button.key);
        EXPECT_EQ(command, MainCommand::FindByKey(button.key)) << Narrow(button.key);
        EXPECT_NE(commands.contains(command), button.key == L"ActionOpen") << Narrow(button.key);
    }
    EXPECT_EQ(Buttons().size(), 18U);
}

}  // namespace
}  // namespace vw
