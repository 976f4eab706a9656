#include "ui/Layout.h"

#include <algorithm>
#include <cstdint>

namespace vw {

namespace {

// Lengths come from our own tables and from the system's windows; the product still needs 64 bits
// when somebody makes a window wider than 20 million pixels.
int MulDivRounded(int value, int factor, int divisor) noexcept {
    const auto product = std::int64_t{value} * factor;
    const auto half = product < 0 ? -(divisor / 2) : divisor / 2;
    return static_cast<int>((product + half) / divisor);
}

struct Span {
    int begin;
    int end;
};

// Each edge is placed for itself, so that neighbours share the rounding and leave no gap.
Span Along(int begin, int length, int move, int grow, int surplus, int dpi) noexcept {
    constexpr int kWhole = 100;
    return {Scaled(begin, dpi) + MulDivRounded(surplus, move, kWhole),
            Scaled(begin + length, dpi) + MulDivRounded(surplus, move + grow, kWhole)};
}

// What there is to share out; what is lacking, up to a third of the design.
int Surplus(int length, int design) noexcept { return std::max(length - design, -(design / 3)); }

}  // namespace

int Scaled(int length, int dpi) noexcept { return MulDivRounded(length, dpi, kDesignDpi); }

Size Scaled(const Size& size, int dpi) noexcept {
    return {Scaled(size.width, dpi), Scaled(size.height, dpi)};
}

Rect BoundsFor(const Bounds& place, const ResizeWeights& flow, const Size& design,
               const Size& client, int dpi) noexcept {
    const int surplusX = Surplus(client.width, Scaled(design.width, dpi));
    const int surplusY = Surplus(client.height, Scaled(design.height, dpi));
    const Span across = Along(place.x, place.width, flow.moveX, flow.growX, surplusX, dpi);
    const Span down = Along(place.y, place.height, flow.moveY, flow.growY, surplusY, dpi);
    return {across.begin, down.begin, across.end, down.end};
}

}  // namespace vw
