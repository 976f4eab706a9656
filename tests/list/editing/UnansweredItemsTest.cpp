// Lists with items of which the disk cannot say now whether they exist.

#include <gmock/gmock.h>

#include "platform/TextDirection.h"
#include "tests/list/editing/ListFixture.h"
#include "tests/support/DeadServer.h"

namespace vw::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class UnansweredItems : public ListFixture {
  protected:
    void Load(const std::vector<std::wstring>& items) {
        std::wstring text = L"BackupTo: " + tree.Folder(L"Vault") + L"\r\n";
        for (const std::wstring& item : items) text += item + L"\r\n";
        ListFile(world.ansi.Encode(text));
        list.GetList();
    }
    [[nodiscard]] std::wstring Cell(int row, std::wstring_view key) {
        return View().Rows().SubItem(row, key);
    }
};

TEST_F(UnansweredItems, Load_ServerIsAway_OneBoxForAllRows) {
    std::vector<std::wstring> items;
    for (int i = 0; i < 5; ++i) items.push_back(L"\\\\nas\\share\\" + std::to_wstring(i));
    world.files.FailFrom(1, error_number::kAccessError, [](const FileOperation& operation) {
        return operation.path.starts_with(L"\\\\nas");
    });
    Load(items);
    EXPECT_THAT(world.errors.Take(), SizeIs(1));
    EXPECT_THAT(Paths(), testing::ElementsAreArray(items));
    for (const wchar_t* key : {L"Size", L"Date", L"SP"}) EXPECT_EQ(Cell(4, key), L"") << key;
}

TEST_F(UnansweredItems, Load_ServerDoesNotAnswer_WindowAsksItNothing) {
    DeadServer server(world.files);
    System system = world.With(server);
    BackupList other(system, state, main.form, dialogs, settings, recent, context);
    ListFile("BackupTo: Q:\\Backup\r\nQ:\\Docs\\a.txt\r\n");
    other.GetList();
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kAccessError);
    EXPECT_THAT(other.Rows().Paths(), ElementsAre(L"Q:\\Docs\\a.txt"));
    EXPECT_EQ(Cell(0, L"Size"), L"");
    EXPECT_THAT(calls, Contains(L"ListLoaded C:"));
    other.ChooseDestination(L"Q:\\Vault");
    EXPECT_EQ(state.BackupTo, L"Q:\\Backup");
    state.currentListPath = L"Q:\\List.vwl";
    EXPECT_FALSE(other.GetList());
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kAccessError);
    EXPECT_THAT(server.askedByWindow, IsEmpty());
}

TEST_F(UnansweredItems, Load_OnlyDestinationOrItemIsAway_WindowAsksItNothing) {
    DeadServer server(world.files);
    System system = world.With(server);
    BackupList other(system, state, main.form, dialogs, settings, recent, context);
    const std::wstring a = tree.File(L"a.txt");
    const std::wstring vault = tree.Folder(L"Vault");
    for (const auto& [destination, item] :
         {std::pair<std::wstring, std::wstring>(L"Q:\\Backup", a), {vault, L"Q:\\Docs\\a.txt"}}) {
        ListFile(world.ansi.Encode(L"BackupTo: " + destination + L"\r\n" + item + L"\r\n"));
        other.GetList();
        static_cast<void>(world.errors.Take());
        EXPECT_THAT(other.Rows().Paths(), ElementsAre(item));
        EXPECT_THAT(server.askedByWindow, IsEmpty()) << destination;
    }
}

TEST_F(UnansweredItems, Load_DestinationIsAway_OneBoxAndEmptyNumbers) {
    world.files.FailFrom(1, error_number::kAccessError, [this](const FileOperation& operation) {
        return operation.path.starts_with(Path(L"Vault"));
    });
    Load({tree.File(L"a.txt"), tree.File(L"b.txt"), tree.File(L"c.txt")});
    EXPECT_THAT(world.errors.Take(), SizeIs(1));
    EXPECT_EQ(Cell(0, L"SP"), L"");
    EXPECT_EQ(Cell(2, L"SP"), L"");
    EXPECT_NE(Cell(2, L"Size"), L"");
}

TEST_F(UnansweredItems, Load_SilentRun_AsksTheDestinationNothing) {
    state.silentRun = true;
    int asked = 0;
    world.files.FailFrom(1, error_number::kAccessError, [&](const FileOperation& operation) {
        if (operation.path.starts_with(Path(L"Vault"))) ++asked;
        return false;
    });
    Load({tree.File(L"a.txt"), tree.File(L"b.txt")});
    EXPECT_EQ(asked, 0);
    EXPECT_THAT(Paths(), SizeIs(2));
}

TEST_F(UnansweredItems, Load_NamesOfDevices_CountAsAbsent) {
    const std::wstring a = tree.File(L"a.txt");
    Load({L"NUL", L"COM1", a, L"con.txt"});
    EXPECT_THAT(Paths(), ElementsAre(a));
    EXPECT_EQ(Status(), L"Not there now: NUL, COM1, con.txt. The next save takes it off the list.");
}

TEST_F(UnansweredItems, Load_ArabicWindow_NamesPathsInTheirOrder) {
    state.language = Language::Arabic;
    const std::wstring gone = Path(L"ذهب\\gone.txt");
    Load({gone, gone + L"x"});
    EXPECT_NE(MarkPath(gone), gone);
    EXPECT_EQ(Status(), L"غير موجود الآن: " + MarkPath(gone) + L"\u200F، " + MarkPath(gone + L"x") +
                            L". ستتم الإزالة من القائمة عند حفظها.");
}

TEST_F(UnansweredItems, LoadedTwice_NamesMissingItemsOnce) {
    Load({Path(L"gone.txt")});
    list.GetList();
    EXPECT_EQ(Status(),
              L"Not there now: " + Path(L"gone.txt") + L". The next save takes it off the list.");
}

TEST_F(UnansweredItems, Save_AfterMissingItemsWereNamed_WithdrawsTheNotice) {
    Load({tree.File(L"a.txt"), Path(L"gone.txt")});
    EXPECT_NE(Status(), L"");
    state.listModified = true;
    EXPECT_TRUE(list.FileSave());
    EXPECT_EQ(Status(), L"");
}

TEST_F(UnansweredItems, Load_MoreThanTwentyAreMissing_NamesTwenty) {
    std::vector<std::wstring> gone;
    for (int i = 1; i <= 20; ++i) gone.push_back(Path(L"gone" + std::to_wstring(i) + L".txt"));
    Load(gone);
    EXPECT_TRUE(Status().ends_with(L"gone20.txt. The next save takes it off the list."));
    gone.push_back(Path(L"gone21.txt"));
    Load(gone);
    EXPECT_TRUE(Status().ends_with(L"gone20.txt\u2026. The next save takes it off the list."));
}

}  // namespace
}  // namespace vw::test
