// private_members: the steps of the solvers that only they themselves can call.
//
// An explicit instantiation may name private members; it hands them on through a friend function.
#pragma once

#include <nmktoolbox/solver/nmkAngleSolver.h>
#include <nmktoolbox/solver/nmkSolver.h>

namespace private_members {

template <class Tag, typename Tag::Type member>
struct Opened {
    friend typename Tag::Type member_of(Tag) { return member; }
};

struct Quadratic {
    using Type = int (*)(double, double, double, double&, double&);
    friend Type member_of(Quadratic);
};
struct QuarticIteratively {
    using Type = int (*)(double, double, double, double, double&, double&);
    friend Type member_of(QuarticIteratively);
};
struct Iteratively {
    using Type = int (*)(double, double, double, double, double, double, double&, double&, double&,
                         double&);
    friend Type member_of(Iteratively);
};
struct Laguer {
    using Type = int (*)(double*, double&);
    friend Type member_of(Laguer);
};
struct SolverLaguer {
    using Type = int (*)(double*, int, double*, int&, int*);
    friend Type member_of(SolverLaguer);
};

using Value = const double&;
using Slots = double* const&;
using AnglesMethod = int (*)(Value, Value, Value, Value, Value, Value, Value, Value, Value, Value,
                             Value, Slots, Slots, Slots, Slots);
struct FirstMethod {
    using Type = AnglesMethod;
    friend Type member_of(FirstMethod);
};
struct SecondMethod {
    using Type = AnglesMethod;
    friend Type member_of(SecondMethod);
};

template struct Opened<Quadratic, &nmkAngleSolver::solve_angles4_quadratic>;
template struct Opened<QuarticIteratively, &nmkAngleSolver::solve_angles4_quartic_iteratively>;
template struct Opened<Iteratively, &nmkAngleSolver::solve_angles4_iteratively>;
template struct Opened<Laguer, &nmkAngleSolver::quartic_laguer>;
template struct Opened<SolverLaguer, &nmkSolver::laguer>;
template struct Opened<FirstMethod, &nmkAngleSolver::solve_angles3_first_method>;
template struct Opened<SecondMethod, &nmkAngleSolver::solve_angles3_second_method>;

}  // namespace private_members
