// `vw schedule` against the system's own scheduler: what was made is read back.

#include "platform/Utf8.h"
#include "tests/console/VwTest.h"

namespace vw::test {
namespace {

class VwSchedule : public VwTest {
  protected:
    VwSchedule() { MakeList({L"a.txt"}); }

    ~VwSchedule() override {
        for (const std::wstring& name : made_) {
            ProgramRun run(
                {.program = BuiltConsole(), .arguments = L"schedule remove " + InQuotes(name)});
            run.WaitForEnd();
        }
    }

    /// A task's name that no other test has.
    std::wstring Name(const std::wstring& end) {
        std::wstring name = L"vwtest" + std::to_wstring(GetCurrentProcessId()) + end;
        made_.push_back(name);
        return name;
    }

    /// What the scheduler has stored of a task.
    static std::wstring Kept(const std::wstring& name) {
        wchar_t folder[MAX_PATH]{};
        GetSystemDirectoryW(folder, MAX_PATH);
        const std::string bytes =
            ReadBytes(std::wstring(folder) + L"\\tasks\\Vaultwright\\" + name);
        if (!bytes.starts_with("\xFF\xFE")) return FromUtf8(bytes);
        return {reinterpret_cast<const wchar_t*>(bytes.data() + 2), bytes.size() / 2 - 1};
    }

    /// Everything that the last run wrote.
    [[nodiscard]] std::wstring All() const {
        std::wstring text;
        for (const std::wstring& line : ShortLines()) text += line + L"\n";
        return text;
    }

    [[nodiscard]] bool Wrote(std::wstring_view text) const {
        return All().find(text) != std::wstring::npos;
    }

    std::vector<std::wstring> made_;
};

TEST_F(VwSchedule, DailyTask_IsMadeShownAndRemoved) {
    const std::wstring name = Name(L"daily");
    RunsTo(0, L"schedule add " + List() + L" --daily 19:05 --log Logs --name " + name);
    EXPECT_TRUE(Wrote(name + L": daily at 19:05, ")) << ToUtf8(All());
    EXPECT_TRUE(Wrote(L"backup \"~\\list.vwl\" --quiet --log \"~\\Logs\" --keep 30"));
    RunsTo(0, L"schedule list");
    EXPECT_TRUE(Wrote(name + L": daily at 19:05, ")) << ToUtf8(All());
    RunsTo(0, L"schedule remove " + name);
    EXPECT_TRUE(Wrote(L"removed: " + name));
    RunsTo(0, L"schedule list");
    EXPECT_FALSE(Wrote(name));
}

TEST_F(VwSchedule, KeptDefinition_HasTheSettingsThatABackupNeeds) {
    const std::wstring name = Name(L"logon");
    RunsTo(0, L"schedule add " + List() + L" --at-logon --name " + name);
    const std::wstring kept = Kept(name);
    for (const wchar_t* element :
         {L"<MultipleInstancesPolicy>IgnoreNew</MultipleInstancesPolicy>",
          L"<DisallowStartIfOnBatteries>false</DisallowStartIfOnBatteries>",
          L"<StopIfGoingOnBatteries>false</StopIfGoingOnBatteries>",
          L"<StartWhenAvailable>true</StartWhenAvailable>",
          L"<ExecutionTimeLimit>PT12H</ExecutionTimeLimit>", L"<Author>Vaultwright</Author>"}) {
        EXPECT_NE(kept.find(element), std::wstring::npos) << ToUtf8(element) << "\n"
                                                          << ToUtf8(kept);
    }
}

TEST_F(VwSchedule, WeeklyTask_NamesItsDay) {
    const std::wstring name = Name(L"weekly");
    RunsTo(0, L"schedule add " + List() + L" --weekly fri 7:30 --name " + name);
    RunsTo(0, L"schedule list");
    EXPECT_TRUE(Wrote(name + L": every Friday at 07:30, ")) << ToUtf8(All());
}

TEST_F(VwSchedule, SecondTaskOfAName_ReplacesTheFirst) {
    const std::wstring name = Name(L"again");
    RunsTo(0, L"schedule add " + List() + L" --daily 19:00 --name " + name);
    RunsTo(0, L"schedule add " + List() + L" --daily 20:00 --name " + name);
    RunsTo(0, L"schedule list");
    EXPECT_TRUE(Wrote(name + L": daily at 20:00, "));
    EXPECT_FALSE(Wrote(name + L": daily at 19:00, "));
}

TEST_F(VwSchedule, BadNamesAndMissingLists_AreRefused) {
    RunsTo(52, L"schedule add " + List() + L" --daily 19:00 --name a\\b");
    RunsTo(4008, L"schedule add gone.vwl --daily 19:00");
    RunsTo(53, L"schedule remove vw-no-such-task");
    EXPECT_EQ(errors, L"error: vw-no-such-task: There is no such task\r\n");
}

}  // namespace
}  // namespace vw::test
