// label_places: places labels so that no two of them overlap.

#include "draw/label_places.h"

#include <algorithm>

namespace nmk_draw {

namespace {

/// The part of a line that is left, from 0 at its beginning to 1 at its end.
struct LinePart {
    double begin = 0.0;
    double end = 1.0;

    /// Leaves the part whose coordinate, `start` at 0 and `start + change` at 1, is in the range.
    void clip(double start, double change, double low, double high) {
        if (change == 0.0) {
            end = start >= low && start <= high ? end : -1.0;
            return;
        }
        const auto [enter, leave] = std::minmax((low - start) / change, (high - start) / change);
        begin = std::max(begin, enter);
        end = std::min(end, leave);
    }
};

}  // namespace

bool LabelBox::overlaps(const LabelBox& other) const {
    return left < other.left + other.width && other.left < left + width &&
           top < other.top + other.height && other.top < top + height;
}

bool LabelBox::inside(const LabelBox& outer) const {
    return left >= outer.left && top >= outer.top && left + width <= outer.left + outer.width &&
           top + height <= outer.top + outer.height;
}

bool crosses(const LabelBox& box, SvgPoint from, SvgPoint to) {
    LinePart part;
    part.clip(from.x, to.x - from.x, box.left, box.left + box.width);
    part.clip(from.y, to.y - from.y, box.top, box.top + box.height);
    return part.begin <= part.end;
}

LabelBox LabelPlaces::moved_inside(LabelBox box) const {
    const double right = m_bounds.left + m_bounds.width - box.width;
    const double bottom = m_bounds.top + m_bounds.height - box.height;
    box.left = std::max(m_bounds.left, std::min(box.left, right));
    box.top = std::max(m_bounds.top, std::min(box.top, bottom));
    return box;
}

bool LabelPlaces::free(const LabelBox& box) const {
    const auto overlaps = [&](const LabelBox& taken) { return box.overlaps(taken); };
    const auto covers = [&](const TakenLine& line) {
        return crosses(box.grown(line.half_width), line.from, line.to);
    };
    return box.inside(m_bounds) && std::none_of(m_taken.begin(), m_taken.end(), overlaps) &&
           std::none_of(m_lines.begin(), m_lines.end(), covers);
}

bool LabelPlaces::place(const std::vector<SvgPoint>& middles, double width, double height,
                        LabelBox& box) {
    for (const SvgPoint& middle : middles) {
        box = moved_inside({middle.x - width / 2, middle.y - height / 2, width, height});
        if (free(box)) {
            take(box);
            return true;
        }
    }
    return false;
}

}  // namespace nmk_draw
