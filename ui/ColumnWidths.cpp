#include "ui/ColumnWidths.h"

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <span>

namespace vw {

namespace {

// One step of shrinking: which columns, and whether they stop where they can still be read.
struct Turn {
    Shrinks columns;
    bool stopsAtReadable;
};

// A long name is cut before the paths of all rows become unreadable.
constexpr Turn kTurns[]{{Shrinks::First, true}, {Shrinks::Last, false}, {Shrinks::First, false}};

// What is still missing when columns have shrunk.
struct Missing {
    int ifReadable = 0;  // before a path becomes unreadable or a name is cut
    int atLast = 0;
};

// Takes what is missing from the columns that shrink, as far as they can spare it.
Missing Shrink(std::span<const ColumnNeed> needs, int room, std::span<int> widths) {
    Missing result;
    int missing = std::accumulate(widths.begin(), widths.end(), -room);
    for (const Turn& turn : kTurns) {
        const auto spareOf = [&](std::size_t i) {
            const ColumnNeed& need = needs[i];
            if (need.shrinks != turn.columns) return 0;
            const int end = turn.stopsAtReadable ? std::max(need.least, need.readable) : need.least;
            return std::max(0, widths[i] - end);
        };
        int spare = 0;
        for (std::size_t i = 0; i < needs.size(); ++i) spare += spareOf(i);
        int lost = std::clamp(missing, 0, spare);
        missing -= lost;
        // Each takes its share of what the columns behind it have to lose as well, so that nothing
        // is left over by rounding.
        for (std::size_t i = 0; i < needs.size() && lost > 0; ++i) {
            const int own = spareOf(i);
            const auto part =
                static_cast<int>((std::int64_t{lost} * own + spare - 1) / std::max(1, spare));
            const int taken = std::min(own, part);
            widths[i] -= taken;
            lost -= taken;
            spare -= own;
        }
        if (turn.stopsAtReadable) result.ifReadable = missing;
    }
    result.atLast = missing;
    return result;
}

}  // namespace

std::vector<int> FittedWidths(const std::vector<ColumnNeed>& needs, int room) {
    const auto path = static_cast<std::size_t>(
        std::ranges::find(needs, Shrinks::First, &ColumnNeed::shrinks) - needs.begin());
    std::vector<int> ideals(needs.size());
    std::ranges::transform(needs, ideals.begin(), &ColumnNeed::ideal);
    for (std::size_t shown = needs.size();; --shown) {
        std::vector<int> widths = ideals;
        const std::span seen(widths.data(), shown);
        const Missing missing = Shrink(std::span(needs).first(shown), room, seen);
        const bool hides =
            missing.atLast > 0 || (missing.ifReadable > 0 && needs[shown - 1].mayHide);
        if (shown > 1 && hides) continue;
        // Half a date or half a size says something wrong: the columns that are seen end at the
        // edge of the list.
        const bool someHide = shown < needs.size();
        if (someHide && path < shown) {
            widths[path] += std::max(0, room - std::accumulate(seen.begin(), seen.end(), 0));
        }
        return widths;
    }
}

}  // namespace vw
