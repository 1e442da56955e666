// mlFunction.h: a real function of one real variable, as solvers and integrators take it.
#pragma once

#pragma GCC visibility push(default)

/// Derive from it to hand a function to a solver. Either operation may throw; solvers pass it on.
class mlFunction {
  public:
    /// The value at `x`.
    virtual double value(double x) const = 0;

    /// The derivative of the given order, 1 or more, at `x`.
    virtual double derivative(int order, double x) const = 0;

    virtual ~mlFunction() = default;

  protected:
    mlFunction() = default;
    mlFunction(const mlFunction&) = default;
    mlFunction& operator=(const mlFunction&) = default;
};

#pragma GCC visibility pop
