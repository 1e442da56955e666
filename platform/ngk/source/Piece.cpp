#include "Piece.h"

#include "arc_length.h"
#include "nearest_by_bounds.h"

namespace nmk_ngk {

template <int Dimension>
void Piece<Dimension>::find_nearest(Nearest<Dimension>& nearest, int segment) const {
    nearest_by_bounds(*this, nearest, segment);
}

template <int Dimension>
double Piece<Dimension>::length(double relative_tolerance, PartsLeft& parts_left) const {
    return arc_length(*this, relative_tolerance, parts_left);
}

template class Piece<2>;
template class Piece<3>;

}  // namespace nmk_ngk
