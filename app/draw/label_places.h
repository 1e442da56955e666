// label_places.h: finds room for labels, so that no two of them overlap.
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

/// About how wide a text comes out at this size; fonts differ, so it is on the wide side.
double text_width(const std::string& words, double font_size);

class LabelPlaces {
  public:
    explicit LabelPlaces(const LabelBox& within) : m_bounds(within) {}

    /// Keeps labels off a box.
    void take(const LabelBox& box) { m_taken.push_back(box); }

    /// The first of the middles at which a label of this size is free, taken from now on; a label
    /// that would stick out is moved inside. False where none is: it had better be left out.
    bool place(const std::vector<SvgPoint>& middles, double width, double height, LabelBox& box);

  private:
    LabelBox moved_inside(LabelBox box) const;
    bool free(const LabelBox& box) const;

    LabelBox m_bounds;
    std::vector<LabelBox> m_taken;
};

}  // namespace nmk_draw
