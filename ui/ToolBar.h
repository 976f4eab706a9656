#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/WindowsHeader.h"
// The common controls' declarations need those of the window system first.
#include <commctrl.h>

#include "ui/FormData.h"
#include "ui/Icons.h"
#include "ui/Picture.h"
#include "ui/ToolBarKeys.h"

namespace vw {

/// A toolbar made of its data. It draws its buttons itself, so that they look alike in
/// both directions of writing. One of them may be accented: it has the colours of what is selected,
/// except where the user chose a high contrast.
class ToolBar {
  public:
    ToolBar(HWND control, const ControlData& data, Language language);

    /// Icons and fonts for another resolution of the screen. The fonts stay the caller's.
    void SetPictures(int dpi, HFONT font, HFONT boldFont);

    /// The button with an id, or nothing.
    [[nodiscard]] const ToolButtonData* Find(int id) const noexcept;

    /// Buttons by their keys; a key that the toolbar does not have throws 5.
    [[nodiscard]] bool IsEnabled(std::wstring_view key) const;
    void Enable(std::wstring_view key, bool on);
    [[nodiscard]] bool IsChecked(std::wstring_view key) const;
    /// Shows a button as pressed in: the choice that holds now.
    void Check(std::wstring_view key, bool on);

    /// Handles a notification of the control; nothing where it does not concern the toolbar.
    std::optional<LRESULT> OnNotify(NMHDR& header);

  private:
    [[nodiscard]] WPARAM IdOf(std::wstring_view key) const;
    void AddButtons();
    void SetWidths();
    std::optional<LRESULT> OnCustomDraw(const NMTBCUSTOMDRAW& draw);
    void PaintButton(const NMTBCUSTOMDRAW& draw, std::size_t position);

    /// The pictures of one button, each made when it is painted for the first time.
    struct Pictures {
        Picture normal;
        Picture faded;
        Picture accented;
    };
    enum class Look { Normal, Faded, Accented };
    [[nodiscard]] const Picture& PictureOf(std::size_t position, Look look);

    HWND control_;
    ToolBarKeys keys_;
    const ControlData& data_;
    Language language_;
    ImageList room_;  ///< empty pictures that give the buttons their size
    std::vector<Pictures> icons_;
    HFONT font_ = nullptr;
    HFONT boldFont_ = nullptr;
    int dpi_ = kDesignDpi;
};

}  // namespace vw
