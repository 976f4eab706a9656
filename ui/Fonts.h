#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/Handle.h"
#include "ui/FormData.h"

namespace vw {

/// Fonts, brushes, bitmaps.
struct FontHandleTraits {
    using Type = HFONT;
    static Type Empty() noexcept { return nullptr; }
    static void Close(Type handle) noexcept { DeleteObject(handle); }
};
using FontHandle = UniqueHandle<FontHandleTraits>;

/// Whether the system has a face, under its own name or one that it puts in its place.
[[nodiscard]] bool FaceExists(std::wstring_view face);

/// The fonts of one form for one resolution of the screen; each is made when it is first asked for.
class Fonts {
  public:
    explicit Fonts(int dpi) : dpi_(dpi) {}

    /// The font for a face of a form's data; the face of the system's message boxes where there is
    /// no such face. Lives as long as this object.
    [[nodiscard]] HFONT Get(const FontData& font);

  private:
    struct Entry {
        std::wstring_view face;
        int points;
        bool bold;
        FontHandle font;
    };

    int dpi_;
    std::vector<Entry> entries_;
};

}  // namespace vw
