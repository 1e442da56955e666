// angle_reference: psi measured from the reference direction (a, b), and back.
#pragma once

#include "solver/angle_system.h"

namespace nmk_solver {

/// The values of psi, from the reference direction, that go with one phi.
struct ReferencePsi {
    int count = 0;
    AngleDirection psi[2];

    void add(double cosine, double sine) { psi[count++] = {cosine, sine}; }
};

/// The equation that psi is computed from. One equation alone where the other is too weak.
enum class PsiSource { second_equation, first_equation, both };

/// psi for c and d divided by the length of (a, b): none where the sine or cosine would exceed 1;
/// the mirrored value comes second.
ReferencePsi reference_psi(PsiSource source, const AngleDirection& phi, double radius, double c,
                           double d);

}  // namespace nmk_solver
