// Part of the test programs that scripts/mutate makes: reads which mutant to carry out, and writes
// which functions each test reaches.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>

extern "C" {
int vwMutant = -1;
unsigned char vwReached[1 << 14];
}

namespace {

/// Writes a line for each test: its name and the numbers of the functions that it reached.
class ReachWriter final : public testing::EmptyTestEventListener {
  public:
    explicit ReachWriter(std::FILE* file) : file_(file) {}

    void OnTestProgramStart(const testing::UnitTest&) override { Write("*"); }
    void OnTestSuiteStart(const testing::TestSuite& suite) override { suite_ = suite.name(); }
    void OnTestStart(const testing::TestInfo&) override { Write(suite_ + ".*"); }
    void OnTestEnd(const testing::TestInfo& test) override {
        Write(std::string(test.test_suite_name()) + "." + test.name());
    }
    void OnTestSuiteEnd(const testing::TestSuite&) override { Write(suite_ + ".*"); }

  private:
    void Write(const std::string& name) {
        std::fputs(name.c_str(), file_);
        for (unsigned number = 0; number < sizeof vwReached; ++number) {
            if (vwReached[number] == 0) continue;
            std::fprintf(file_, " %u", number);
            vwReached[number] = 0;
        }
        std::fputs("\n", file_);
        std::fflush(file_);
    }

    std::FILE* file_;
    std::string suite_;
};

[[gnu::constructor(101)]] void ReadMutant() {
    const char* number = std::getenv("VW_MUTANT");
    if (number != nullptr) vwMutant = std::atoi(number);
}

[[gnu::constructor]] void WriteReach() {
    const char* path = std::getenv("VW_REACHED");
    if (path == nullptr) return;
    if (std::FILE* file = std::fopen(path, "w")) {
        testing::UnitTest::GetInstance()->listeners().Append(new ReachWriter(file));
    }
}

}  // namespace
