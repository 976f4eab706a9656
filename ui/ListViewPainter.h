#pragma once

#include <array>
#include <optional>
#include <string>

#include "ui/FormData.h"
#include "ui/Icons.h"
#include "ui/ListViewControl.h"
#include "ui/ListViewRows.h"
#include "ui/Picture.h"

namespace vw {

/// The overlay image of rows with a warning.
inline constexpr int kWarningOverlay = 1;

/// The pictures of rows for one resolution of the screen.
struct RowPictures {
    explicit RowPictures(int dpi);

    /// Those of the view with large icons, made when they are asked for first.
    [[nodiscard]] HIMAGELIST Large();

    ImageList small;
    std::array<Picture, 3> icons;  ///< the small ones, for rows that are drawn here
    Picture mark;                  ///< small, for rows with a warning
    int pixels;                    ///< of a small icon

  private:
    ImageList large_;
    int dpi_;
};

/// Shows the rows of a list view. Those of the Details view are drawn here: paths read from left to
/// right in every language and lose their middle, not their end. In the other views the control
/// draws them, and asks for their texts and icons.
class ListViewPainter {
  public:
    ListViewPainter(const ListViewControl& control, const ListViewRows& rows,
                    const ControlData& data, Language language) noexcept
        : control_(control), rows_(rows), data_(data), language_(language) {}

    void SetPictures(RowPictures& pictures) noexcept { pictures_ = &pictures; }
    /// Gives the control the pictures for the view with large icons, or takes them away.
    void TakeLargePictures(bool isNeeded) const;

    /// Fills in what the control asks about a row.
    void Answer(NMLVDISPINFOW& info);
    [[nodiscard]] std::optional<LRESULT> OnCustomDraw(const NMLVCUSTOMDRAW& draw);

    /// Excludes the rows from what is erased, where they would flicker.
    void KeepRows(HDC dc) const;

  private:
    void PaintRow(HDC dc, int row) const;
    void PaintIcon(HDC dc, const RECT& area, const ListViewRows::Row& row) const;
    void PaintEmptyText(HDC dc) const;

    const ListViewControl& control_;
    const ListViewRows& rows_;
    const ControlData& data_;
    Language language_;
    RowPictures* pictures_ = nullptr;
    std::wstring asked_;      ///< the text that the control asked for last
    bool isFocused_ = false;  ///< the list has the keyboard, as the painting began
};

}  // namespace vw
