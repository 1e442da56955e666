// plain_angles_first: the choice of the method for two angles, the degenerate case and the two
// chains, written down one sentence after the other.
#pragma once

#include "solver/plain_angles3.h"

namespace plain_angles {

inline int pole(const System& s, int count, Slots& out) {
    if (s.h <= 0.0 || count > 0) return count;
    double c[2], t[2];
    const int n = solve1(s.d, s.e, (s.g - s.f) / s.h, c, t);
    for (int i = 0; i < n; ++i) put(out, i, 1.0, 0.0, c[i], t[i]);
    return n;
}

inline int without_c(const System& s, Slots& out) {
    const double r = std::sqrt(s.a * s.a + s.b * s.b);
    if (r == 0.0) return pole(s, 0, out);
    int count = 0;
    bool at_pole = false;
    const double m = s.d * (s.b / r) + s.e * (-s.a / r);
    for (const double way : {1.0, -1.0}) {
        double c[2], t[2];
        const int n = solve1(s.f, way * m * s.k, s.g - way * m * s.h, c, t);
        for (int i = 0; i < n && count < 2; ++i) {
            if (c[i] < 0.0 || t[i] < 0.0 || t[i] * s.k + s.h < 0.0) continue;
            if (t[i] == 0.0 && at_pole) continue;
            at_pole |= t[i] == 0.0;
            put(out, count++, c[i], t[i], way * (s.b / r), way * (-s.a / r));
        }
    }
    return pole(s, count, out);
}

struct Chain {
    double x, y, cp = 0.0, sp = 0.0;
};

inline double sine_of(double x) { return x > 0.0 ? std::sqrt(std::max(0.0, 1.0 - x * x)) : 1.0; }

/// The candidates of a chain; none when it must be given up.
inline int candidates(const System& s, const Chain& from, Chain* to) {
    double c[2], t[2];
    const int n = solve1(from.y * s.a, from.y * s.b, -s.c * from.x, c, t);
    const double R = from.y * s.k + s.h;
    if (R < 0.0) return 0;
    for (int i = 0; i < n; ++i) {
        const double x = (s.g - (s.d * c[i] + s.e * t[i]) * R) / s.f;
        if (std::fabs(x) >= 1.00001) return 0;
        to[i] = {x, sine_of(x), c[i], t[i]};
    }
    return n;
}

inline bool settled(const Chain& from, const Chain& to, bool psi_too) {
    const auto near = [](double p, double q) { return std::fabs(p - q) <= 1e-5; };
    return near(from.x, to.x) && near(from.y, to.y) &&
           (!psi_too || (near(from.cp, to.cp) && near(from.sp, to.sp)));
}

inline bool run_chains(const System& s, Chain& zero, Chain& one) {
    zero.x = one.x = s.g / s.f;
    zero.y = one.y = sine_of(zero.x);
    for (int pass = 1; pass <= 10; ++pass) {
        Chain c[2], d[2];
        int n = candidates(s, zero, c);
        if (n == 0) return false;
        const int larger = n == 2 && c[1].x > c[0].x ? 1 : 0;
        Chain next = n == 2 ? c[1 - larger] : c[0];
        if (one.x != zero.x) {
            n = candidates(s, one, d);
            if (n == 0) return false;
            next = n == 2 && d[1].x < d[0].x ? d[1] : d[0];
        }
        const bool done = settled(zero, c[larger], pass > 1) && settled(one, next, pass > 1);
        zero = c[larger];
        one = next;
        if (done) return true;
    }
    return false;
}

inline int first_method(const System& s, Slots& out) {
    if (s.sa == 0.0) return pole(s, 0, out);
    if (std::fabs(s.c) <= 1e-10) return without_c(s, out);
    Chain zero, one;
    if (!run_chains(s, zero, one)) return Second(s).solve(out);
    if (zero.x < -1e-5 || one.x > 1.00001 || one.y * s.k + s.h < 0.0) return 0;
    int count = one.x < -1e-5 ? 1 : 2;
    if (zero.x > 1.00001 || zero.y * s.k + s.h < 0.0) {
        if (--count < 1) return 0;
        zero = one;
    }
    zero.x = std::min(1.0, std::max(0.0, zero.x));
    one.x = std::min(1.0, std::max(0.0, one.x));
    put(out, 0, zero.x, zero.y, zero.cp, zero.sp);
    if (count == 2) put(out, 1, one.x, one.y, one.cp, one.sp);
    return count == 2 && zero.x == one.x && zero.cp == one.cp && zero.sp == one.sp ? 1 : count;
}

inline int degenerate(const System& s, Slots& out) {
    int n = 0;
    if (s.h < 0.0) {
        const double t = -s.h / s.k;
        const double u = std::sqrt(std::max(0.0, 1.0 - t * t));
        double cp[2], sp[2];
        n = solve1(t * s.a, t * s.b, -u * s.c, cp, sp);
        for (int i = 0; i < n; ++i) put(out, i, u, t, cp[i], sp[i]);
    }
    const double m = std::sqrt(std::max(0.0, s.d * s.d + s.e * s.e));
    if (m == 0.0) return n;
    double cp = -s.e / m, sp = s.d / m;
    double w = cp * s.a + sp * s.b;
    if ((w > 0.0 && s.c > 0.0) || (!(w > 0.0) && !(s.c > 0.0))) {
        cp = -cp;
        sp = -sp;
        w = -w;
    }
    if (n == 2) return 2;
    const double q = std::sqrt(std::max(0.0, w * w + s.c * s.c));
    const double sn = std::fabs(s.c) / q;
    if (sn * s.k + s.h >= 0.0) put(out, n, std::fabs(w) / q, sn, cp, sp);
    return n + 1;
}

inline int solve3(System s, Slots& out) {
    if (s.h + s.k < 0.0) return 0;
    double r = std::sqrt(s.d * s.d + s.e * s.e);
    if (r == 0.0) r = 1.0;
    s.d /= r;
    s.e /= r;
    s.h *= r;
    s.k *= r;
    s.sr = std::max({std::fabs(s.h), s.k, std::fabs(s.f), std::fabs(s.g)});
    if (s.sr == 0.0) return 0;
    for (double* one : {&s.h, &s.k, &s.f, &s.g}) *one /= s.sr;
    s.sa = std::max({std::fabs(s.a), std::fabs(s.b), std::fabs(s.c)});
    if (s.sa == 0.0) return first_method(s, out);
    for (double* one : {&s.a, &s.b, &s.c}) *one /= s.sa;
    if (std::fabs(s.c) <= 1e-10) return first_method(s, out);
    if (s.h == 0.0 && s.k > 0.001) return Second(s).solve(out);
    if (s.f != 0.0 && std::fabs(s.f) <= std::fabs(s.g)) return Second(s).solve(out);
    if (s.f != 0.0) return first_method(s, out);
    if (s.f == 0.0 && s.g == 0.0) return degenerate(s, out);
    return Second(s).solve(out);
}

}  // namespace plain_angles
