// solver.h: real roots of polynomials, systems of angles, roots of functions in a bracket.
#pragma once

#include <nmktoolbox/solver/nmkAngleSolver.h>
#include <nmktoolbox/solver/nmkCumulativeGaussian.h>
#include <nmktoolbox/solver/nmkNumberFormatter.h>
#include <nmktoolbox/solver/nmkNumberRounder.h>
#include <nmktoolbox/solver/nmkNumericalPrecision.h>
#include <nmktoolbox/solver/nmkRange.h>
#include <nmktoolbox/solver/nmkRootSolve.h>
#include <nmktoolbox/solver/nmkSolver.h>
