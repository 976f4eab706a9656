// What the copies browser asks of the disk, counted at the edge to the system: one listing of the
// copy folder, however many copies there are, and the rest for the one item whose copies are shown.
// And what a restore asks: a call that is added has to be added here, with a reason.

#include "tests/restore/RestoreEnvironment.h"
#include "tests/support/CallCounts.h"

namespace vw::test {
namespace {

class BrowserCallCount : public RestoreEnvironment {
  protected:
    /// `items` items with three copies each.
    void MakeCopies(int items) {
        for (int item = 0; item < items; ++item) {
            for (const auto* number : {L"«0001»", L"«0002»", L"«0003»"}) {
                CopyFile(L"Letter" + std::to_wstring(item) + number + L".txt");
            }
        }
    }
    CallCounts CallsOfListing() {
        world.files.Heal();
        browser.ListRestoreFiles();
        return CallCounts(world.files.Operations());
    }
};

TEST_F(BrowserCallCount, ListAllItems_CallsAreCounted) {
    MakeCopies(2);
    EXPECT_EQ(CallsOfListing().Text(), "Stat 11, List 2, Identify 2");
    MakeCopies(100);
    EXPECT_EQ(CallsOfListing().Text(), "Stat 11, List 2, Identify 2")
        << "as many for a hundred items";
}

TEST_F(BrowserCallCount, ListCopiesOfAnItem_CallsAreCounted) {
    MakeCopies(2);
    const CallCounts withThree = CallsOfListing();
    CopyFile(L"Letter0«0004».txt");
    const CallCounts withFour = CallsOfListing();
    EXPECT_EQ((withFour - withThree).Text(), "Stat 3") << "for one more copy";
    CopyFile(L"Letter0«0001».txt.vwc", "Backed Files Date Last Modified:01/02/2024-03:04:05+");
    EXPECT_EQ((CallsOfListing() - withFour).Text(), "Stat -3, Read 2") << "for a comment";
}

TEST_F(BrowserCallCount, ListItemsWithComments_CallsAreCounted) {
    const auto list = [&](int items) {
        for (int item = 0; item < items; ++item) {
            const std::wstring copy = L"Memo" + std::to_wstring(item) + L"«0001».txt";
            CopyFile(copy);
            CopyFile(copy + L".vwc", "Original Location:C:\\windows");
        }
        return CallsOfListing();
    };
    const CallCounts withThree = list(3);
    EXPECT_EQ((list(10) - withThree).Text(), "Read 7") << "one look at the folder serves all";
}

// Below a folder with a point in its name: one listing of each folder on the way to a copy, none of
// the copies themselves.
TEST_F(BrowserCallCount, ListItemsInSharedFolders_CallsAreCounted) {
    CopyFile(L"A«0001».txt");
    const CallCounts before = CallsOfListing();
    for (const auto* folder : {L"Docs«0001».smith", L"Docs«0002».smith"}) {
        for (const auto* item : {L"\\My\\Docs", L"\\Old\\Docs"}) {
            CopyFile(std::wstring(folder) + item + L"\\Deep\\a.txt");
            CopyFile(std::wstring(folder) + item + L"\\b.txt");
        }
    }
    CopyFile(L"Docs«0001».smith\\My\\Docs.vwc");
    CopyFile(L"Docs«0001».smith\\Old\\Docs.vwc");
    EXPECT_EQ((CallsOfListing() - before).Text(), "Stat 4, List 6, Read 2");
}

class RestoreCallCount : public RestoreEnvironment {
  protected:
    /// Backs up a new folder with `folders` sub-folders of `files` files each; gives its name.
    std::wstring BackedUp(int folders, int files) {
        std::wstring name = L"Work" + std::to_wstring(++made_);
        for (int folder = 0; folder < folders; ++folder) {
            for (int file = 0; file < files; ++file) {
                tree.File(name + L"\\Sub" + std::to_wstring(folder) + L"\\f" +
                          std::to_wstring(file));
            }
        }
        BackUp(tree.Path(name) + L"\\");
        return name;
    }
    CallCounts CallsOfRestoring(const std::wstring& name) {
        world.files.Heal();
        engine.Extract(vault + L"\\" + name + L"«0001»", tree.Path(), false);
        return CallCounts(world.files.Operations());
    }
    CallCounts NewPlace(int folders, int files) {
        const std::wstring name = BackedUp(folders, files);
        tree.Remove(name);
        return CallsOfRestoring(name);
    }
    CallCounts OverItself(int folders, int files) {
        return CallsOfRestoring(BackedUp(folders, files));
    }
    /// Over itself, beside a file that has the name under which a restore writes.
    CallCounts BesideALeftOver(int files) {
        const std::wstring name = BackedUp(1, files);
        tree.File(name + L"\\Sub0\\~vwr0.tmp", "left");
        return CallsOfRestoring(name);
    }

  private:
    int made_ = 0;
};

TEST_F(RestoreCallCount, NewPlace_CallsAreCounted) {
    const CallCounts smallest = NewPlace(1, 1);
    EXPECT_EQ(smallest.Text(),
              "Stat 5, List 3, Copy 1, CreateFolder 2, Rename 1, CopyFolderInfo 2");
    EXPECT_EQ((NewPlace(1, 11) - smallest).Text(), "Copy 10") << "for ten more files";
    EXPECT_EQ((NewPlace(2, 1) - smallest).Text(),
              "List 2, Copy 1, CreateFolder 1, CopyFolderInfo 1")
        << "for one more folder";
}

TEST_F(RestoreCallCount, OverItself_CallsAreCounted) {
    const CallCounts smallest = OverItself(1, 1);
    EXPECT_EQ(smallest.Text(),
              "Stat 7, List 4, Copy 1, Replace 1, CopyFolderInfo 2, CopyAccessRights 1");
    EXPECT_EQ((OverItself(1, 2) - smallest).Text(), "Stat 2, Copy 1, Replace 1, CopyAccessRights 1")
        << "for one more file";
    EXPECT_EQ((OverItself(2, 1) - smallest).Text(),
              "Stat 4, List 2, Copy 1, Replace 1, CopyFolderInfo 1, CopyAccessRights 1")
        << "for one more folder";
}

TEST_F(RestoreCallCount, BesideALeftOver_ItsNameIsTriedOnce) {
    EXPECT_EQ((BesideALeftOver(5) - BesideALeftOver(1)).Text(),
              (OverItself(1, 5) - OverItself(1, 1)).Text());
}

}  // namespace
}  // namespace vw::test
