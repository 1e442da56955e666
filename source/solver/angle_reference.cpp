#include "solver/angle_reference.h"

#include <cmath>

namespace nmk_solver {

ReferencePsi reference_psi(PsiSource source, const AngleDirection& phi, double radius, double c,
                           double d) {
    ReferencePsi found;
    if (source == PsiSource::second_equation) {
        const double sine = d / radius;
        if (!(std::fabs(sine) <= 1.0)) return found;
        const double cosine = std::sqrt(1.0 - sine * sine);
        found.add(cosine, sine);
        if (cosine != 0.0) found.add(-cosine, sine);
    } else if (source == PsiSource::first_equation) {
        const double cosine = -c * phi.cosine / phi.sine;
        if (!(std::fabs(cosine) <= 1.0)) return found;
        const double sine = std::sqrt(1.0 - cosine * cosine);
        found.add(cosine, sine);
        if (sine != 0.0) found.add(cosine, -sine);
    } else {
        const double u = -c * phi.cosine * radius;
        const double v = phi.sine * d;
        const double w = u * u + v * v;
        if (w == 0.0) {
            found.add(c < 0.0 ? -1.0 : 1.0, 0.0);
        } else {
            found.add(u / std::sqrt(w), v / std::sqrt(w));
        }
    }
    return found;
}

}  // namespace nmk_solver
