// label_places: places labels so that no two of them overlap.

#include "draw/label_places.h"

#include <algorithm>

namespace nmk_draw {

bool LabelBox::overlaps(const LabelBox& other) const {
    return left < other.left + other.width && other.left < left + width &&
           top < other.top + other.height && other.top < top + height;
}

bool LabelBox::inside(const LabelBox& outer) const {
    return left >= outer.left && top >= outer.top && left + width <= outer.left + outer.width &&
           top + height <= outer.top + outer.height;
}

double text_width(const std::string& words, double font_size) {
    return static_cast<double>(words.size()) * font_size * 0.58;
}

LabelBox LabelPlaces::moved_inside(LabelBox box) const {
    const double right = m_bounds.left + m_bounds.width - box.width;
    const double bottom = m_bounds.top + m_bounds.height - box.height;
    box.left = std::max(m_bounds.left, std::min(box.left, right));
    box.top = std::max(m_bounds.top, std::min(box.top, bottom));
    return box;
}

bool LabelPlaces::free(const LabelBox& box) const {
    return box.inside(m_bounds) && std::none_of(m_taken.begin(), m_taken.end(),
                                                [&](const LabelBox& t) { return box.overlaps(t); });
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
