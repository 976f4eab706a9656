// Part of the test programs that scripts/mutate makes: reads which mutants to carry out, one in
// each repetition of the tests, and writes which functions each test reaches.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

extern "C" {
int vwMutant = -1;
unsigned char vwReached[1 << 14];

void vwReach(int function) { vwReached[function] = 1; }
}

namespace {

std::vector<int>& Mutants() {
    static std::vector<int> mutants;
    return mutants;
}

class MutantChooser final : public testing::EmptyTestEventListener {
  public:
    void OnTestIterationStart(const testing::UnitTest&, int iteration) override {
        const auto index = static_cast<std::size_t>(iteration);
        vwMutant = index < Mutants().size() ? Mutants()[index] : -1;
    }
};

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

/// The first mutant is there before the constructors of the program run.
[[gnu::constructor(101)]] void ReadFirstMutant() {
    const char* numbers = std::getenv("VW_MUTANTS");
    if (numbers != nullptr) vwMutant = std::atoi(numbers);
}

[[gnu::constructor]] void ReadMutants() {
    const char* numbers = std::getenv("VW_MUTANTS");
    if (numbers == nullptr) return;
    for (char* end = nullptr; *numbers != '\0'; numbers = *end == ',' ? end + 1 : end) {
        Mutants().push_back(static_cast<int>(std::strtol(numbers, &end, 10)));
        if (end == numbers) break;
    }
    testing::UnitTest::GetInstance()->listeners().Append(new MutantChooser);
}

[[gnu::constructor]] void WriteReach() {
    const char* path = std::getenv("VW_REACHED");
    if (path == nullptr) return;
    // A test may start this program again, which adds what it reaches.
    if (std::FILE* file = std::fopen(path, "a")) {
        testing::UnitTest::GetInstance()->listeners().Append(new ReachWriter(file));
    }
}

}  // namespace
