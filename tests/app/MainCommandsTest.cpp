// Which command each button and each menu entry stands for.

#include "app/MainCommands.h"
#include "ui/resource.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "ui/Form.h"
#include "ui/Forms.h"
#include "ui/ToolBarTable.h"

namespace vw {
namespace {

/// For the messages of failed tests; all keys are plain letters.
std::string Narrow(std::wstring_view text) {
    std::string narrow;
    for (const wchar_t unit : text) narrow += static_cast<char>(unit);
    return narrow;
}

struct Row {
    const wchar_t* key;
    const wchar_t* menu;  ///< the entry with the same command
    int index;            ///< of that entry
};

// The button that opens the selection looks at the list that the user worked in last; it has no
// entry of its own.
const Row kButtons[]{
    {L"EditAddFile", L"mnuAddFile", 0},
    {L"EditAddFiles", L"mnuAddFiles", 0},
    {L"EditAddFolder", L"mnuAddFolder", 0},
    {L"Del", L"mnuDel", 0},
    {L"EditDelAll", L"mnuDelAll", 0},
    {L"ActionBackup", L"mnuBackup", 0},
    {L"ActionOpen", nullptr, 0},
    {L"ActionRestore", L"mnuRestore", 0},
    {L"ActionRestoreTo", L"mnuRestoreTo", 0},
    {L"ViewLIcons", L"mnuViewMethod", 0},
    {L"ViewSIcons", L"mnuViewMethod", 1},
    {L"ViewList", L"mnuViewMethod", 2},
    {L"ViewDetails", L"mnuViewMethod", 3},
    {L"FileNew", L"mnuFileNew", 0},
    {L"FileOpen", L"mnuFileOpen", 0},
    {L"FileSave", L"mnuFileSave", 0},
    {L"FileSaveAs", L"mnuFileSaveAs", 0},
    {L"FileExit", L"mnuFileClose", 0},
};

std::wstring InCapitals(std::wstring text) {
    for (wchar_t& unit : text) {
        if (unit >= L'a' && unit <= L'z') unit = static_cast<wchar_t>(unit - L'a' + L'A');
    }
    return text;
}

/// The number of a menu entry.
int IdOf(std::wstring_view name, int index) {
    for (const MenuItemData& entry : MainForm().menu) {
        if (entry.name == name && (entry.index == index || entry.index == kNoIndex))
            return entry.id;
    }
    ADD_FAILURE() << Narrow(name);
    return 0;
}

TEST(MainCommands, AButtonDoesWhatItsMenuEntryDoes) {
    for (const Row& row : kButtons) {
        SCOPED_TRACE(Narrow(row.key));
        const MainCommand* command = MainCommand::FindByKey(row.key);
        ASSERT_NE(command, nullptr);
        if (row.menu == nullptr) continue;
        EXPECT_EQ(command, MainCommand::Find(IdOf(row.menu, row.index)));
    }
}

TEST(MainCommands, KeysCompareWithoutRegardToCase) {
    for (const Row& row : kButtons) {
        EXPECT_EQ(MainCommand::FindByKey(InCapitals(row.key)), MainCommand::FindByKey(row.key))
            << Narrow(row.key);
    }
}

TEST(MainCommands, AnUnknownKeyDoesNothing) {
    for (const auto* key : {L"", L"EditAdd", L"Delete", L"FileNewer"}) {
        EXPECT_EQ(MainCommand::FindByKey(key), nullptr) << Narrow(key);
    }
    EXPECT_EQ(MainCommand::Find(0), nullptr);
    EXPECT_EQ(MainCommand::Find(ID_mnuViewMethod_4), nullptr) << "a separator";
}

// Nothing that a user can choose is without a command, and no two entries share one.
TEST(MainCommands, EveryEntryAndEveryButtonOfTheWindowHasOne) {
    std::set<const MainCommand*> commands;
    for (const MenuItemData& entry : MainForm().menu) {
        if (entry.level == 0 || entry.separator) continue;
        const MainCommand* command = MainCommand::Find(entry.id);
        ASSERT_NE(command, nullptr) << Narrow(entry.name);
        EXPECT_TRUE(commands.insert(command).second) << Narrow(entry.name);
    }
    std::size_t buttons = 0;
    for (const ControlData& control : MainForm().controls) {
        for (const ToolButtonData& button : control.buttons) {
            const MainCommand* command = MainCommand::Find(button.id);
            ASSERT_NE(command, nullptr) << Narrow(button.key);
            EXPECT_EQ(command, MainCommand::FindByKey(button.key)) << Narrow(button.key);
            ++buttons;
        }
    }
    EXPECT_EQ(buttons, std::size(kButtons));
}

}  // namespace
}  // namespace vw
