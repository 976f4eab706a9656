// Part of the whole program that scripts/mutate makes: reads which mutant to carry out, and writes
// each function that is reached at once, since the program may be ended at any time.
#include <cstdio>
#include <cstdlib>

extern "C" {
int vwMutant = -1;
unsigned char vwReached[1 << 14];

void vwReach(int function) {
    vwReached[function] = 1;
    const char* path = std::getenv("VW_REACHED");
    if (path == nullptr) return;
    if (std::FILE* file = std::fopen(path, "a")) {
        std::fprintf(file, "%d\n", function);
        std::fclose(file);
    }
}
}

namespace {

[[gnu::constructor(101)]] void ReadMutant() {
    const char* number = std::getenv("VW_MUTANTS");
    if (number != nullptr) vwMutant = std::atoi(number);
}

}  // namespace
