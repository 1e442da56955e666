// label_places.h: places labels so that no two of them overlap.
#pragma once

#include <vector>

#include "draw/svg_document.h"

namespace nmk_draw {

/// A rectangle in the drawing.
struct LabelBox {
    double left = 0.0, top = 0.0, width = 0.0, height = 0.0;

    bool overlaps(const LabelBox& other) const;
    bool inside(const LabelBox& outer) const;

    /// The box with this much more on each side.
    LabelBox grown(double by) const {
        return {left - by, top - by, width + 2 * by, height + 2 * by};
    }
};

/// True if a part of the straight line between two points is in the box.
bool crosses(const LabelBox& box, SvgPoint from, SvgPoint to);

class LabelPlaces {
  public:
    explicit LabelPlaces(const LabelBox& within) : m_bounds(within) {}

    /// Reserves a box, which no label may overlap.
    void take(const LabelBox& box) { m_taken.push_back(box); }

    /// Reserves a straight line of this width, which no label may cover.
    void take_line(SvgPoint from, SvgPoint to, double width) {
        m_lines.push_back({from, to, width / 2});
    }

    /// Reserves the first of the middles at which a label of this size overlaps nothing; a label
    /// that would leave the bounds is moved inside. False if there is none. The time grows with the
    /// number of what is reserved.
    bool place(const std::vector<SvgPoint>& middles, double width, double height, LabelBox& box);

  private:
    struct TakenLine {
        SvgPoint from, to;
        double half_width;
    };

    LabelBox moved_inside(LabelBox box) const;
    bool free(const LabelBox& box) const;

    LabelBox m_bounds;
    std::vector<LabelBox> m_taken;
    std::vector<TakenLine> m_lines;
};

}  // namespace nmk_draw
