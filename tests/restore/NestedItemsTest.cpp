#include "restore/NestedItems.h"

#include <gtest/gtest.h>

#include "restore/CopyGroup.h"
#include "tests/support/TempTree.h"
#include "tests/support/TestEnvironment.h"

namespace vw::test {
namespace {

/// A disk whose entries have the marks that their names say.
class MarkedEntries final : public ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;

    void List(std::wstring_view folder, const EntryVisitor& visitor) override {
        ForwardingFileSystem::List(folder, [&](const FolderEntry& entry) {
            FolderEntry marked = entry;
            marked.isHidden = entry.name.ends_with(L".hidden");
            marked.isSystem = entry.name.ends_with(L".system");
            marked.isLink = entry.name.ends_with(L"Link");
            visitor(marked);
        });
    }
};

class NestedItems : public testing::Test {
  protected:
    std::vector<NestedItem> Find() {
        const CopyEntry copy{.path = tree.Path(L"Docs«0001».smith"), .isFolder = true};
        return FindNestedItems(disk, env.pump, {.origin = L"Docs.smith", .copies = {copy}});
    }
    void AddFile(std::wstring_view below) {
        tree.File(L"Docs«0001».smith\\" + std::wstring(below));
    }

    TempTree tree;
    TestEnvironment env;
    MarkedEntries disk{env.files};
};

TEST_F(NestedItems, CopyBesideHiddenOrSystemFiles_IsFound) {
    AddFile(L"A\\Docs\\a.txt");
    AddFile(L"A\\left.hidden");
    AddFile(L"left.system");
    ASSERT_EQ(Find().size(), 1U);
    EXPECT_EQ(Find().front().below, L"A\\Docs");
    AddFile(L"users.txt");
    EXPECT_TRUE(Find().empty());
}

TEST_F(NestedItems, CopyInOtherLetterCase_HasTheNameOnTheDisk) {
    AddFile(L"A\\DOCS\\a.txt");
    ASSERT_EQ(Find().size(), 1U);
    EXPECT_EQ(Find().front().below, L"A\\DOCS");
}

TEST_F(NestedItems, Links_AreNotEntered) {
    AddFile(L"Link\\Docs\\a.txt");
    EXPECT_TRUE(Find().empty());
}

TEST_F(NestedItems, CopiesOfThreeItems_AreFound_WindowsKeepWorking) {
    for (const wchar_t* folder : {L"A", L"B", L"C"}) {
        AddFile(std::wstring(folder) + L"\\Docs\\a.txt");
    }
    EXPECT_EQ(Find().size(), 3U);
    EXPECT_GE(env.pump.Yields(), 6);
}

}  // namespace
}  // namespace vw::test
