#include <array>
#include <cstddef>

#include "platform/TextCase.h"
#include "platform/WindowsHeader.h"

namespace vw {
namespace {

constexpr std::size_t kUnits = 0x10000;

/// The system's answer for all units at once: one call for the table is cheaper than a call for
/// each of the names that a run compares.
class UpperTable {
  public:
    UpperTable() noexcept {
        FillPlainly();
        const int count = static_cast<int>(kUnits);
        if (::LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_UPPERCASE, units_.data(), count,
                            units_.data(), count, nullptr, nullptr, 0) != count) {
            FillPlainly();  // names beyond ASCII then differ by their case
        }
    }

    [[nodiscard]] wchar_t operator[](std::size_t unit) const noexcept { return units_[unit]; }

  private:
    void FillPlainly() noexcept {
        for (std::size_t unit = 0; unit < kUnits; ++unit) {
            units_[unit] = static_cast<wchar_t>(unit);
        }
    }

    std::array<wchar_t, kUnits> units_;
};

}  // namespace

wchar_t UpperCase(wchar_t character) noexcept {
    if (character < 0x80) {
        const bool isSmall = character >= L'a' && character <= L'z';
        return isSmall ? static_cast<wchar_t>(character - L'a' + L'A') : character;
    }
    static const UpperTable table;
    return table[character];
}

}  // namespace vw
