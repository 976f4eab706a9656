#include "ui/Icons.h"

#include "platform/SystemError.h"

namespace vw {

IconHandle LoadPicture(int id, int pixels) noexcept {
    return IconHandle(static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id),
                                                    IMAGE_ICON, pixels, pixels, 0)));
}

ImageList MakeImageList(std::span<const int> ids, int pixels) {
    const int count = static_cast<int>(ids.size());
    ImageList list(ImageList_Create(pixels, pixels, ILC_COLOR32 | ILC_MASK, count, 1));
    if (!list) RaiseLast({});
    // With the count set first, every place exists and is empty.
    ImageList_SetImageCount(list.Get(), static_cast<UINT>(count));
    for (int i = 0; i < count; ++i) {
        const IconHandle icon = LoadPicture(ids[static_cast<std::size_t>(i)], pixels);
        if (icon) ImageList_ReplaceIcon(list.Get(), i, icon.Get());
    }
    return list;
}

}  // namespace vw
