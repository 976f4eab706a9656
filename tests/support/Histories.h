#pragma once

#include <cstdlib>

namespace vw::test {

/// Seeds of random histories: as many as a test names, from 1; or what a soak asks for with the
/// environment variables VW_FIRST_SEED and VW_HISTORIES.
struct Histories {
    unsigned first = 1;
    unsigned count = 0;

    [[nodiscard]] unsigned End() const noexcept { return first + count; }

    [[nodiscard]] static Histories Usually(unsigned count) {
        const auto number = [](const char* name, unsigned usual) {
            const char* const text = std::getenv(name);
            return text == nullptr ? usual : static_cast<unsigned>(std::strtoul(text, nullptr, 10));
        };
        return {number("VW_FIRST_SEED", 1), number("VW_HISTORIES", count)};
    }
};

}  // namespace vw::test
