#include "ui/ColumnWidths.h"

#include <algorithm>
#include <cstdint>

namespace vw {

namespace {

// Half a date or half a size says something wrong. The columns that are seen at first end at the
// edge of the list, and those that give way first take what is left of the room.
void EndColumnAtEdge(const std::vector<ColumnNeed>& needs, int room, std::vector<int>& widths) {
    int left = room;
    std::size_t seen = 0;
    while (seen < widths.size() && widths[seen] <= left) left -= widths[seen++];
    for (std::size_t i = 0; i < seen; ++i) {
        if (needs[i].givesWay != GivesWay::First) continue;
        widths[i] += left;
        return;
    }
}

}  // namespace

std::vector<int> FittedWidths(const std::vector<ColumnNeed>& needs, int room) {
    std::vector<int> widths;
    int missing = -room;
    for (const ColumnNeed& need : needs) {
        widths.push_back(need.ideal);
        missing += need.ideal;
    }
    for (const GivesWay turn : {GivesWay::First, GivesWay::Last}) {
        const auto spareOf = [&](const ColumnNeed& need) {
            return need.givesWay == turn ? std::max(0, need.ideal - need.least) : 0;
        };
        int spare = 0;
        for (const ColumnNeed& need : needs) spare += spareOf(need);
        int lost = std::clamp(missing, 0, spare);
        missing -= lost;
        // Each takes its share of what the columns behind it have to lose as well, so that nothing
        // is left over by rounding.
        for (std::size_t i = 0; i < needs.size() && lost > 0; ++i) {
            const int own = spareOf(needs[i]);
            const auto part =
                static_cast<int>((std::int64_t{lost} * own + spare - 1) / std::max(1, spare));
            const int taken = std::min(own, part);
            widths[i] -= taken;
            lost -= taken;
            spare -= own;
        }
    }
    if (missing > 0) EndColumnAtEdge(needs, room, widths);
    return widths;
}

}  // namespace vw
