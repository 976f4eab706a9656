#pragma once

#include "ui/Bitmap.h"

namespace vw {

/// A square picture of the program's resources that is drawn with its transparency.
class Picture {
  public:
    /// Draws nothing.
    Picture() = default;
    /// The icon with this number, this many pixels wide and high; draws nothing without one.
    Picture(int id, int pixels);

    [[nodiscard]] bool IsEmpty() const noexcept { return bitmap_.Get() == nullptr; }
    void Draw(HDC dc, int left, int top) const;

    /// The same in grey and half transparent, for what cannot be chosen now.
    [[nodiscard]] Picture Faded() const;

  private:
    Bitmap bitmap_;  ///< its colours are multiplied by their opacity
    int pixels_ = 0;
};

}  // namespace vw
