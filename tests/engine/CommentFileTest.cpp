#include <gtest/gtest.h>

#include "engine/CommentLine.h"
#include "platform/RuntimeError.h"
#include "platform/UserLocale.h"
#include "platform/WindowsHeader.h"
#include "tests/engine/EngineFixture.h"

namespace vw::test {
namespace {

constexpr std::string_view kDateLabel = "Backed Files Date Last Modified:";
constexpr DateParts kDate{2005, 3, 5, 14, 7, 9};

// The comment that a backup on this machine writes.
std::string ExpectedComment(std::string_view encodedFolder) {
    const auto date = static_cast<char>(OneCharacterSeparator(UserDateSeparator(), L'/'));
    const auto time = static_cast<char>(OneCharacterSeparator(UserTimeSeparator(), L':'));
    std::string text(kDateLabel);
    text += std::string("05") + date + "03" + date + "2005-14" + time + "07" + time + "09";
    text += "+Original Location:";
    return text.append(encodedFolder);
}

// What the engine answers for a copy "a«0001».txt" with a comment of these bytes.
Date DateByComment(EngineFixture& world, std::string_view bytes) {
    world.tree.File(L"Store\\a«0001».txt.vwc", bytes);
    Date date = kNoDate;
    world.With([&](CPackage& engine) { date = engine.PackageDate(world.Store(L"a«0001».txt")); });
    return date;
}

std::wstring LocationByComment(EngineFixture& world, std::string_view bytes) {
    world.tree.File(L"Store\\a«0001».txt.vwc", bytes);
    std::wstring location;
    world.With([&](CPackage& engine) {
        location = engine.PackageOriginalLocation(world.Store(L"a«0001».txt"));
    });
    return location;
}

TEST(CommentFile, Name_FollowsThatOfTheCopy) {
    EXPECT_EQ(CPackage::PackageCommentFile(L"E:\\Store\\Report«0001».doc"),
              L"E:\\Store\\Report«0001».doc.vwc");
    EXPECT_EQ(CPackage::PackageCommentFile(L"E:\\Store\\Work«0001»\\"),
              L"E:\\Store\\Work«0001».vwc");
    EXPECT_EQ(CPackage::PackageCommentFile(L"\"E:\\Store\\Work«0001»\\\""),
              L"E:\\Store\\Work«0001».vwc");
    EXPECT_EQ(CPackage::PackageCommentFile(L"E:\\Store\\Work«0001».Files\\Work\\"),
              L"E:\\Store\\Work«0001».Files\\Work.vwc");
}

TEST(CommentFile, HoldsTheNewestDateAndTheParentFolder) {
    EngineFixture world;
    world.tree.File(L"a.txt", "a", kDate);
    world.tree.File(L"Work\\old.txt", "a", Day(1));
    world.tree.File(L"Work\\Sub\\new.txt", "a", kDate);
    world.tree.SetDate(L"Work\\old.txt", {2001, 1, 1, 0, 0, 0});
    world.List({L"a.txt", L"Work\\", L"Work\\*"});
    world.Run();
    const std::string folder = world.ansi.Encode(world.Path());
    EXPECT_EQ(world.Comment(L"a«0001».txt"), ExpectedComment(folder));
    EXPECT_EQ(world.Comment(L"Work«0001»"), ExpectedComment(folder));
}

TEST(CommentFile, Rule_NamesTheParentFolder) {
    EngineFixture world;
    world.tree.File(L"Work\\a.txt", "a", kDate);
    world.List({L"Work\\*"});
    world.Run();
    EXPECT_EQ(world.Comment(L"Work«0001»"), ExpectedComment(world.ansi.Encode(world.Path())));
}

TEST(CommentFile, EncodesAnArabicFolder) {
    EngineFixture world;
    const std::wstring file = world.tree.File(L"ملف\\a.txt", "a", kDate);
    world.List({L"ملف\\a.txt"});
    world.Run();
    const std::string folder = world.ansi.Encode(world.Path());
    EXPECT_EQ(world.Comment(L"a«0001».txt"), ExpectedComment(folder + "\\'E3E1DD"));
    std::wstring location;
    world.With([&](CPackage& engine) {
        location = engine.PackageOriginalLocation(world.Store(L"a«0001».txt"));
    });
    EXPECT_EQ(location, world.Path(L"ملف"));
}

TEST(CommentFile, FolderOutsideTheCodePage_IsReadBack) {
    for (const wchar_t* folder : {L"日本語", L"a日b", L"שלום und ملف", L"\U0001F600"}) {
        EngineFixture world;
        world.tree.File(std::wstring(folder) + L"\\a.txt", "a", kDate);
        world.List({});
        world.With([&](CPackage& engine) {
            engine.BackupItem(world.Path(std::wstring(folder) + L"\\a.txt"));
            EXPECT_EQ(engine.PackageOriginalLocation(world.Store(L"a«0001».txt")),
                      world.Path(folder));
        });
        for (const char character : world.Comment(L"a«0001».txt")) {
            EXPECT_GE(character, ' ');
        }
    }
}

TEST(CommentFile, DriveRoot_NamesTheDriveAlone) {
    EngineFixture world;
    const std::wstring drive = world.Path().substr(0, 2);
    EXPECT_EQ(LocationByComment(world, "Original Location:" + world.ansi.Encode(drive)), drive);
}

TEST(CommentFile, WritesAndReadsOneLine) {
    EngineFixture world;
    const std::wstring copy = world.tree.File(L"Store\\a«0001».txt");
    world.With([&](CPackage& engine) {
        engine.PackageComment(copy, L"first");
        engine.PackageComment(copy, L"نص ثانٍ");
        EXPECT_EQ(engine.PackageComment(copy), L"نص ثانٍ");
    });
    EXPECT_EQ(world.Comment(L"a«0001».txt"), world.ansi.Encode(L"نص ثانٍ"));
    EXPECT_EQ(world.Comments().size(), 1U);
    EXPECT_EQ(world.Copies().size(), 1U);
}

TEST(CommentFile, ReadsUpToTheFirstLineEnd) {
    EngineFixture world;
    const std::wstring copy = world.Store(L"a«0001».txt");
    struct Row {
        const char* bytes;
        const wchar_t* line;
    };
    for (const Row& row : {Row{"", L""}, Row{"one", L"one"}, Row{"one\r\ntwo", L"one"},
                           Row{"one\ntwo", L"one"}, Row{"one\rtwo", L"one"}, Row{"\r\n", L""}}) {
        world.tree.File(L"Store\\a«0001».txt.vwc", row.bytes);
        world.With([&](CPackage& engine) { EXPECT_EQ(engine.PackageComment(copy), row.line); });
    }
}

TEST(CommentFile, FolderCopyMissesFiles_IsMarkedIncomplete) {
    EngineFixture world;
    world.tree.File(L"Work\\a.txt", "a", Day(1));
    world.tree.File(L"Work\\b.txt", "b", Day(1));
    world.List({L"Work\\"});
    const std::wstring copy = world.Store(L"Work«0001»");
    {
        const FileHandle held = HoldOpen(world.Path(L"Work\\b.txt"));
        world.Run();
    }
    EXPECT_TRUE(world.Comment(L"Work«0001»").ends_with("\r\nIncomplete"));
    world.With([&](CPackage& engine) {
        EXPECT_TRUE(engine.IsMarkedIncomplete(copy));
        EXPECT_EQ(engine.PackageDate(copy), MakeDate(Day(1)));
        EXPECT_EQ(engine.PackageOriginalLocation(copy), world.Path());
        EXPECT_EQ(engine.PackageComment(copy).find(L"Incomplete"), std::wstring::npos);
        EXPECT_FALSE(engine.IsMarkedIncomplete(world.Store(L"Work«0002»")));
    });
}

TEST(CommentFile, Missing_ReadsAsEmpty) {
    EngineFixture world;
    const std::wstring copy = world.Store(L"a«0001».txt");
    world.With([&](CPackage& engine) { EXPECT_EQ(engine.PackageComment(copy), L""); });
    // A folder of that name is no comment either.
    world.tree.Folder(L"Store\\a«0001».txt.vwc");
    const RunResult result =
        world.With([&](CPackage& engine) { EXPECT_EQ(engine.PackageComment(copy), L""); });
    EXPECT_TRUE(result.errors.empty());
}

TEST(CommentFile, ReadOnly_IsReplaced) {
    EngineFixture world;
    world.tree.File(L"a.txt", "1", Day(1));
    world.List({L"a.txt"});
    world.Run();
    world.tree.SetAttributes(L"Store\\a«0001».txt.vwc", FILE_ATTRIBUTE_READONLY);
    world.tree.File(L"a.txt", "2", kDate);
    world.ExpectRun(BackedUp(L"~\\a.txt"));
    EXPECT_EQ(world.Comment(L"a«0001».txt"), ExpectedComment(world.ansi.Encode(world.Path())));
}

TEST(CommentFile, WriteFails_KeepsTheOldComment) {
    EngineFixture world;
    const std::wstring copy = world.tree.File(L"Store\\a«0001».txt");
    world.With([&](CPackage& engine) { engine.PackageComment(copy, L"old"); });
    for (const FileCall call : {FileCall::Write, FileCall::Replace}) {
        world.files.FailNth(1, error_number::kDiskFull, OnlyCalls({call}));
        const RunResult result =
            world.With([&](CPackage& engine) { engine.PackageComment(copy, L"new"); });
        ASSERT_EQ(result.errors.size(), 1U);
        EXPECT_EQ(result.errors[0].procedure, L"PackageComment");
        EXPECT_EQ(world.Comment(L"a«0001».txt"), "old");
    }
}

TEST(CommentFile, Unreadable_IsReported) {
    EngineFixture world;
    const std::wstring copy = world.Store(L"a«0001».txt");
    const FileHandle held = HoldOpen(world.tree.File(L"Store\\a«0001».txt.vwc", "text"));
    const RunResult result =
        world.With([&](CPackage& engine) { EXPECT_EQ(engine.PackageComment(copy), L""); });
    EXPECT_EQ(Joined(result.lines), Joined({L"! 70 PackageComment ~\\Store\\a«0001».txt.vwc"}));
}

TEST(StoredDate, AnySeparators_ReadsByPosition) {
    EngineFixture world;
    for (const char* field :
         {"05/03/2005-14:07:09", "05.03.2005-14.07.09", "05x03x2005x14x07x09",
          "05 03 2005 14 07 09+Original Location:C:\\", "05/03/2005-14:07:09x"}) {
        EXPECT_EQ(DateByComment(world, std::string(kDateLabel) + field), MakeDate(kDate)) << field;
    }
}

TEST(StoredDate, LabelInAnyLetterCase_IsFound) {
    EngineFixture world;
    EXPECT_EQ(DateByComment(world, "xBACKED FILES date last modified:05/03/2005-14:07:09"),
              MakeDate(kDate));
}

TEST(StoredDate, Damaged_ReadsItsDigits) {
    EngineFixture world;
    const auto dateOf = [&](const std::string& field) {
        return DateByComment(world, std::string(kDateLabel) + field);
    };
    using namespace std::string_literals;
    EXPECT_EQ(dateOf("05/03/2005"), MakeDate({2005, 3, 5, 0, 0, 0}));
    EXPECT_EQ(dateOf("05/03/2005-xx:yy:zz"), MakeDate({2005, 3, 5, 0, 0, 0}));
    EXPECT_EQ(dateOf("31/02/2005-00:00:00"), MakeDate({2005, 3, 3, 0, 0, 0}));
    EXPECT_EQ(dateOf("05/13/2005-25:61:61"), MakeDate({2006, 1, 6, 2, 2, 1}));
    EXPECT_EQ(dateOf("05/03/05  -00:00:00"), MakeDate({2005, 3, 5, 0, 0, 0}));
    EXPECT_EQ(dateOf("05/03/95  -00:00:00"), MakeDate({1995, 3, 5, 0, 0, 0}));
    EXPECT_EQ(dateOf(""), MakeDate({0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(dateOf("\x01\xff\x00garbage"s), MakeDate({0, 0, 0, 0, 0, 0}));
}

TEST(StoredDate, Impossible_IsReportedWithItsFile) {
    EngineFixture world;
    world.tree.File(L"Store\\a«0001».txt.vwc", std::string(kDateLabel) + "31/12/9999-24:00:00");
    const RunResult result = world.With([&](CPackage& engine) {
        EXPECT_EQ(engine.PackageDate(world.Store(L"a«0001».txt")), kMissingDate);
    });
    ASSERT_EQ(result.errors.size(), 1U);
    EXPECT_EQ(result.errors[0].number, error_number::kInvalidCall);
    EXPECT_EQ(result.errors[0].procedure, L"PackageDate");
    EXPECT_EQ(result.errors[0].path, world.Store(L"a«0001».txt.vwc"));
}

TEST(StoredDate, NoLabel_ReturnsTheDateOfTheCopy) {
    EngineFixture world;
    world.tree.File(L"Store\\a«0001».txt", "a", kDate);
    EXPECT_EQ(DateByComment(world, "no label"), MakeDate(kDate));
    world.tree.Remove(L"Store\\a«0001».txt.vwc");
    world.With([&](CPackage& engine) {
        EXPECT_EQ(engine.PackageDate(world.Store(L"a«0001».txt")), MakeDate(kDate));
    });
}

TEST(StoredDate, NoComment_ReturnsTheNewestFileOfAFolderCopy) {
    EngineFixture world;
    world.tree.File(L"Store\\Work«0001»\\a.txt", "a", Day(1));
    world.tree.File(L"Store\\Work«0001»\\Sub\\Deep\\b.txt", "b", kDate);
    world.tree.SetDate(L"Store\\Work«0001»\\a.txt", {2001, 1, 1, 0, 0, 0});
    world.With([&](CPackage& engine) {
        EXPECT_EQ(engine.PackageDate(world.Store(L"Work«0001»")), MakeDate(kDate));
        EXPECT_EQ(engine.PackageDate(world.Store(L"Work«0001»\\")), MakeDate(kDate));
    });
}

TEST(StoredDate, NoFiles_ReturnsTheYear1000) {
    EngineFixture world;
    world.tree.Folder(L"Store\\Work«0001»\\Sub");
    world.With([&](CPackage& engine) {
        EXPECT_EQ(engine.PackageDate(world.Store(L"Work«0001»")), MakeDate({1000, 1, 1, 0, 0, 0}));
        EXPECT_EQ(engine.PackageDate(world.Store(L"none«0001»")), MakeDate({1000, 1, 1, 0, 0, 0}));
    });
}

TEST(StoredDate, OlderCopyAfterARotation_ReturnsItsOwnDate) {
    EngineFixture world;
    world.List({L"a.txt"});
    for (int step = 1; step <= 2; ++step) {
        world.tree.File(L"a.txt", std::to_string(step), Day(step));
        world.Run();
    }
    world.tree.SetDate(L"Store\\a«0002».txt", kDate);
    world.With([&](CPackage& engine) {
        EXPECT_EQ(engine.PackageDate(world.Store(L"a«0002».txt")), MakeDate(kDate));
        EXPECT_EQ(engine.PackageOriginalLocation(world.Store(L"a«0002».txt")), L"??");
    });
}

TEST(OriginalLocation, NoLabelOrNoSuchFolder_IsUnknown) {
    EngineFixture world;
    EXPECT_EQ(LocationByComment(world, ""), L"??");
    EXPECT_EQ(LocationByComment(world, "no label"), L"??");
    EXPECT_EQ(LocationByComment(world, "Original Location:"), L"??");
    const std::string root = world.ansi.Encode(world.Path());
    EXPECT_EQ(LocationByComment(world, "Original Location:" + root + "\\Nowhere"), L"??");
    world.tree.File(L"file");
    EXPECT_EQ(LocationByComment(world, "Original Location:" + root + "\\file"), L"??");
    EXPECT_EQ(LocationByComment(world, "Original Location:" + root + "*"), L"??");
    std::wstring location;
    world.With([&](CPackage& engine) {
        location = engine.PackageOriginalLocation(world.Store(L"none«0001».txt"));
    });
    EXPECT_EQ(location, L"??");
}

TEST(OriginalLocation, LabelInAnyLetterCase_ReadsToTheEndOfTheLine) {
    EngineFixture world;
    const std::wstring folder = world.tree.Folder(L"a + b");
    const std::string bytes = world.ansi.Encode(folder);
    EXPECT_EQ(LocationByComment(world, "xORIGINAL location:" + bytes + "\r\nmore"), folder);
}

TEST(OriginalLocation, DecodesAnUnterminatedRun) {
    EngineFixture world;
    const std::wstring folder = world.tree.Folder(L"ملف");
    const std::string root = world.ansi.Encode(world.Path());
    EXPECT_EQ(LocationByComment(world, "Original Location:" + root + "\\'E3E1DD"), folder);
    EXPECT_EQ(LocationByComment(world, "Original Location:" + root + "\\'e3e1dd'"), folder);
}

TEST(OriginalLocation, FolderWithAnApostrophe_IsUnknown) {
    EngineFixture world;
    world.tree.File(L"O'Brien\\a.txt", "a", kDate);
    world.List({L"O'Brien\\a.txt"});
    world.Run();
    world.With([&](CPackage& engine) {
        EXPECT_EQ(engine.PackageOriginalLocation(world.Store(L"a«0001».txt")), L"??");
    });
}

}  // namespace
}  // namespace vw::test
