#pragma once

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

/// What the system has of a face, under its own name or one that it puts in its place.
struct FaceInfo {
    bool exists = false;
    bool isRaster = false;   ///< drawn in few sizes only, and enlarged for the others
    bool hasArabic = false;  ///< has Arabic letters of its own
};

[[nodiscard]] FaceInfo InfoOf(std::wstring_view face);

/// Whether a face serves for a font of a form: a raster face would be coarse on a screen of 125 %
/// (120 dots per inch) and more, or may lack the letters that are shown in it.
[[nodiscard]] bool Serves(const FaceInfo& face, const FontData& font, int dpi) noexcept;

/// The fonts of one form for one resolution of the screen; each is made when it is first asked for.
class Fonts {
  public:
    explicit Fonts(int dpi) : dpi_(dpi) {}

    /// The font for a face of a form's data; where that does not serve, Microsoft Sans Serif for a
    /// raster face and the face of the system's message boxes for one that does not exist. Lives
    /// as long as this object.
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
