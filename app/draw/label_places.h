// label_places.h: places labels so that no two of them overlap.
#pragma once

#include <string>
#include <vector>

#include "draw/svg_document.h"

namespace nmk_draw {

/// A rectangle in the drawing.
struct LabelBox {
    double left = 0.0, top = 0.0, width = 0.0, height = 0.0;

    bool overlaps(const LabelBox& other) const;
    bool inside(const LabelBox& outer) const;
};

/// The approximate width of a text at this size, a little too wide rather than too narrow.
double text_width(const std::string& words, double font_size);

class LabelPlaces {
  public:
    explicit LabelPlaces(const LabelBox& within) : m_bounds(within) {}

    /// Reserves a box, which no label may overlap.
    void take(const LabelBox& box) { m_taken.push_back(box); }

    /// Reserves the first of the middles at which a label of this size overlaps nothing; a label
    /// that would leave the bounds is moved inside. False if there is none.
    bool place(const std::vector<SvgPoint>& middles, double width, double height, LabelBox& box);

  private:
    LabelBox moved_inside(LabelBox box) const;
    bool free(const LabelBox& box) const;

    LabelBox m_bounds;
    std::vector<LabelBox> m_taken;
};

}  // namespace nmk_draw
