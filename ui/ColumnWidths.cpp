#include "ui/ColumnWidths.h"

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <span>

namespace vw {

namespace {

// Half a date or half a size says something wrong. The columns that are seen at first end at the
// edge of the list, and the first one that shrinks gets what is left of the room.
void EndColumnAtEdge(int room, std::size_t path, std::span<int> widths) {
    int left = room;
    std::size_t seen = 0;
    while (seen < widths.size() && widths[seen] <= left) left -= widths[seen++];
    if (path < seen) widths[path] += left;
}

// Takes what is missing from the columns that shrink, as far as they can spare it. Returns what is
// still missing.
int Shrink(std::span<const ColumnNeed> needs, int room, std::span<int> widths) {
    int missing = std::accumulate(widths.begin(), widths.end(), -room);
    for (const Shrinks turn : {Shrinks::First, Shrinks::Last}) {
        const auto spareOf = [&](const ColumnNeed& need) {
            return need.shrinks == turn ? std::max(0, need.ideal - need.least) : 0;
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
    return missing;
}

}  // namespace

std::vector<int> FittedWidths(const std::vector<ColumnNeed>& needs, int room) {
    const auto path = static_cast<std::size_t>(
        std::ranges::find(needs, Shrinks::First, &ColumnNeed::shrinks) - needs.begin());
    std::vector<int> ideals;
    for (const ColumnNeed& need : needs) ideals.push_back(need.ideal);
    for (std::size_t shown = needs.size();; --shown) {
        std::vector<int> widths = ideals;
        const std::span seen(widths.data(), shown);
        const int missing = Shrink(std::span(needs).first(shown), room, seen);
        const bool isNarrow =
            path < shown && widths[path] < std::min(needs[path].readable, needs[path].ideal);
        const bool mayHide = shown > 0 && needs[shown - 1].mayHide;
        if (mayHide && (missing > 0 || isNarrow)) continue;
        if (missing > 0 || shown < needs.size()) EndColumnAtEdge(room, path, seen);
        return widths;
    }
}

}  // namespace vw
