#pragma once

namespace vw {

/// Pixels of a screen that is not enlarged: places and sizes of controls are written for it.
inline constexpr int kDesignDpi = 96;

struct Size {
    int width = 0;
    int height = 0;

    friend bool operator==(const Size&, const Size&) = default;
};

struct Rect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    [[nodiscard]] constexpr int Width() const noexcept { return right - left; }
    [[nodiscard]] constexpr int Height() const noexcept { return bottom - top; }

    friend bool operator==(const Rect&, const Rect&) = default;
};

/// Where a control lies in a form of its design size, from the side where reading begins, at 96
/// DPI.
struct Bounds {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

/// What a control does when its form is not of the design size: by how many hundredths of the
/// growth it moves away from the corner where reading begins, and by how many it grows itself.
struct ResizeWeights {
    int moveX = 0;
    int moveY = 0;
    int growX = 0;
    int growY = 0;
};

/// A length of the design on a screen with this many dots per inch, rounded.
[[nodiscard]] int Scaled(int length, int dpi) noexcept;

/// The same for both sides of a size.
[[nodiscard]] Size Scaled(const Size& size, int dpi) noexcept;

/// The rectangle of a control, in pixels, in a form whose inner size is `client` pixels and whose
/// design is `design` large. Edges that meet in the design meet on every screen. In a form smaller
/// than its design, which only small screens have, what would grow shrinks, down to two thirds of
/// the design; then the form's edge cuts off the rest.
[[nodiscard]] Rect BoundsFor(const Bounds& place, const ResizeWeights& flow, const Size& design,
                             const Size& client, int dpi) noexcept;

}  // namespace vw
