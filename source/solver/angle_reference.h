// angle_reference: psi measured from the reference direction (a, b), and back.
#pragma once

#include "solver/angle_system.h"

/// The values of psi, from the reference direction, that go with one phi.
struct ReferencePsi {
    int count = 0;
    AngleDirection psi[2];

    void add(double cosine, double sine) { psi[count++] = {cosine, sine}; }
};

/// Which of the two equations is too weak to give psi.
enum class PsiSource { second_equation, first_equation, both };

/// psi for c and d divided by the length of (a, b). None when one equation is out of reach; the
/// mirrored value comes second.
ReferencePsi reference_psi(PsiSource source, const AngleDirection& phi, double radius, double c,
                           double d);
