// Runs over items whose names meet in the destination, in which one disk operation after the other
// goes wrong. Whatever it is, and after the run that follows: every comment describes the copy
// beside it, and a series holds the copies of one item.

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "platform/RuntimeError.h"
#include "tests/engine/EngineFixture.h"
#include "tests/engine/LeftOvers.h"
#include "tests/support/DestinationChecker.h"

namespace vw::test {
namespace {

// Files of one name, a folder in the copy of another, and one below a dotted folder.
const Lines kItems{L"A\\R.doc", L"B\\R.doc", L"Data.old\\", L"Work.old\\Data\\",
                   L"j.smith\\Docs\\"};

struct Plan {
    const char* name;
    std::function<void(FaultyFileSystem&, int)> arrange;
    int stride = 3;  ///< every third operation: the others are swept where names do not meet
};

// A folder that cannot be listed while the newest date is looked for is passed over: the item looks
// older than it is, which costs one more copy.
bool IsNoDateWalk(const FileOperation& operation) {
    return operation.call != FileCall::List ||
           operation.path.find(L"\\Store") != std::wstring::npos;
}

const Plan kPlans[] = {
    {"killed", [](FaultyFileSystem& files, int n) { files.DieAtNth(n); }},
    {"refused once",
     [](FaultyFileSystem& files, int n) {
         files.FailNth(n, error_number::kPermissionDenied, IsNoDateWalk);
     }},
    {"device error once",
     [](FaultyFileSystem& files, int n) {
         files.FailNth(n, error_number::kDeviceError, IsNoDateWalk);
     }},
    {"broken from there on",
     [](FaultyFileSystem& files, int n) { files.FailFrom(n, error_number::kDeviceError); }},
    {"disk full", [](FaultyFileSystem& files, int n) { files.FillDiskFrom(n); }, 1},
};

class SeriesSweep : public testing::TestWithParam<Plan> {
  protected:
    SeriesSweep() {
        checker_.AllowPartialOlderCopies();
        world_.List(kItems);
    }

    // Gives every item another state.
    void Edit() {
        ++step_;
        const std::string text = "state " + std::to_string(step_);
        for (const wchar_t* file :
             {L"A\\R.doc", L"B\\R.doc", L"Data.old\\y.txt", L"Data.old\\Data\\x.txt",
              L"Work.old\\Data\\z.txt", L"j.smith\\Docs\\d.txt"}) {
            const std::wstring path(file);
            world_.tree.File(path, text + " of " + std::string(path.begin(), path.end()),
                             {2020, 1, 1, 10 + step_ / 3600, step_ / 60 % 60, step_ % 60});
        }
        for (const std::wstring& item : kItems) checker_.Learn(world_.Path(item));
    }

    EngineFixture world_;
    DestinationChecker checker_{world_.Store()};
    int step_ = 0;
};

TEST_P(SeriesSweep, KeepsCommentsAndSeriesWithTheirItems) {
    int points = 0;
    for (int i = 0; i < 3; ++i) {
        Edit();
        world_.Run();
    }
    ASSERT_EQ(checker_.Violations(), "");
    for (int n = 1;; n += GetParam().stride) {
        Edit();
        FaultyFileSystem& files = world_.files;
        GetParam().arrange(files, n);
        world_.Run();
        const bool went = !files.Faults().empty();
        const std::string where = went ? Describe(files.Faults().front()) : std::string();
        files.Heal();
        if (!went) break;
        ++points;
        SCOPED_TRACE(std::string(GetParam().name) + " at " + std::to_string(n) + ", " + where);
        UpdateControls(world_, DeadProcess());
        EXPECT_EQ(checker_.Violations(), "");
        EXPECT_EQ(world_.Run().exitCode, error_number::kAccessError) << "the refused item only";
        EXPECT_EQ(checker_.Violations(), "");
        EXPECT_EQ(LeftOvers(world_), Lines());
        if (HasFailure()) return;
    }
    RecordProperty("points", points);
    EXPECT_GT(points, 10);
}

// Another program puts a copy and its comment into a place while the run works.
TEST(SeriesOfTwoOwners, AnotherProgramAddsACopy_CommentsStayWithTheirCopies) {
    for (int n = 1;; ++n) {
        EngineFixture world;
        DestinationChecker checker(world.Store());
        world.List({L"A\\R.doc", L"A\\Work\\"});
        for (const wchar_t* file : {L"A\\R.doc", L"A\\Work\\a.txt", L"C\\R.doc"}) {
            world.tree.File(file, "state", Day(n % 20 + 1));
        }
        world.tree.File(L"C\\R.doc", "of another computer", Day(25));
        checker.LearnAll({world.Path(L"A\\R.doc"), world.Path(L"A\\Work\\")});
        int operations = 0;
        bool came = false;
        world.files.OnOperation([&](const FileOperation&) {
            if (came || ++operations < n || Exists(world.Store(L"R«0001».doc"))) return;
            came = true;
            world.tree.File(L"Store\\R«0001».doc", "of another computer", Day(25));
        });
        world.Run();
        world.files.Heal();
        if (!came) break;
        SCOPED_TRACE("another copy at operation " + std::to_string(n));
        const std::string copy = ReadBytes(world.Store(L"R«0001».doc"));
        if (copy == "of another computer") {
            EXPECT_EQ(world.Comments().count(L"R«0001».doc.vwc"), 0U)
                << "a comment of ours beside a copy that is not";
        } else {
            EXPECT_EQ(checker.Violations(), "");
        }
        if (testing::Test::HasFailure()) return;
    }
}

INSTANTIATE_TEST_SUITE_P(Faults, SeriesSweep, testing::ValuesIn(kPlans),
                         [](const testing::TestParamInfo<Plan>& plan) {
                             std::string name = plan.param.name;
                             std::erase(name, ' ');
                             return name;
                         });

}  // namespace
}  // namespace vw::test
