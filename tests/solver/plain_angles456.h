// plain_angles456: the systems of two angles whose second equation bears on the radius, written
// down one sentence after the other. The results of the solver must be the same to the last bit.
#pragma once

#include "solver/plain_angles3.h"

namespace plain_angles {

/// psi' to psi, for a reference of direction (a, b) and length r; r is 1 where they were divided.
inline void turn_back(double a, double b, double r, double cosine, double sine, double& cp,
                      double& sp) {
    cp = clip(cosine * a / r - sine * b / r);
    sp = clip(cosine * b / r + sine * a / r);
}

struct Psi {
    double cosine, sine;
};

inline std::vector<Psi> from_second(double d, double R) {
    const double sine = d / R;
    if (std::fabs(sine) > 1.0) return {};
    const double cosine = std::sqrt(1.0 - sine * sine);
    if (cosine == 0.0) return {{cosine, sine}};
    return {{cosine, sine}, {-cosine, sine}};
}

inline std::vector<Psi> from_first(double c, double cf, double sf) {
    const double cosine = -c * cf / sf;
    if (std::fabs(cosine) > 1.0) return {};
    const double sine = std::sqrt(1.0 - cosine * cosine);
    if (sine == 0.0) return {{cosine, sine}};
    return {{cosine, sine}, {cosine, -sine}};
}

inline std::vector<Psi> from_both(double c, double d, double cf, double sf, double R) {
    const double u = -c * cf * R, v = sf * d;
    const double w = u * u + v * v;
    if (w == 0.0) return {{c < 0.0 ? -1.0 : 1.0, 0.0}};
    return {{u / std::sqrt(w), v / std::sqrt(w)}};
}

inline std::vector<Psi> psi4(double c, double d, double cf, double sf, double R) {
    if (sf < 1e-5 * R) return from_second(d, R);
    if (R < 1e-5 * sf) return from_first(c, cf, sf);
    return from_both(c, d, cf, sf, R);
}

inline void quartic4(double c, double d, double h, double k, double* q4) {
    if (c * c <= 1.0) {
        q4[0] = -h * h * c * c;
        q4[1] = -2.0 * h * k * c * c;
        q4[2] = h * h * c * c - k * k * c * c + h * h - d * d;
        q4[3] = 2.0 * h * k * c * c + 2.0 * h * k;
        q4[4] = k * k * c * c + k * k;
        return;
    }
    const double A = h + k, B = h - k;
    const double p = 2.0 * A * B, q = 4.0 * c * c + 2.0;
    q4[0] = d * d - A * A;
    q4[1] = A * A * q - p;
    q4[2] = -2.0 * d * d - A * A + p * q - B * B;
    q4[3] = B * B * q - p;
    q4[4] = d * d - B * B;
}

inline Phi phi4(double c, double y) {
    if (c * c <= 1.0) return {std::sqrt(1.0 - y * y), y};
    return {2.0 * std::sqrt(y) / (1.0 + y), (1.0 - y) / (1.0 + y)};
}

inline int solve6(double a, double b, double c, double d, double k, Slots& out) {
    const double r = std::sqrt(a * a + b * b);
    if (r == 0.0) return 0;
    a /= r;
    b /= r;
    c /= r;
    d /= r;
    const double m = std::max(k, std::fabs(d));
    if (m == 0.0) return 0;
    d /= m;
    k /= m;
    const double q = (c * c * k * k + d * d) / ((c * c + 1.0) * k * k);
    if (q > 1.0 && q - 1.0 >= 1e-15) return 0;
    if (!std::isfinite(q)) return 0;
    const double sf = q > 1.0 ? 1.0 : std::sqrt(q);
    const double cf = q > 1.0 ? 0.0 : std::sqrt(1.0 - q);
    const double R = sf * k;
    if (R < 0.0) return 0;
    const auto found = 1e-5 * k > 1.0 ? from_second(d, R)
                       : k < 1e-5     ? from_first(c, cf, sf)
                                      : from_both(c, d, cf, sf, R);
    int n = 0;
    for (const Psi& one : found) {
        double cp = 0.0, sp = 0.0;
        turn_back(a, b, 1.0, one.cosine, one.sine, cp, sp);
        put(out, n++, clip(cf), clip(sf), cp, sp);
    }
    return n;
}

struct Scaled {
    double r, c, d, h, k;
};

inline Scaled scaled4(double a, double b, double c, double d, double h, double k) {
    const double r = std::sqrt(a * a + b * b);
    c /= r;
    d /= r;
    const double m = std::max({std::fabs(h), k, std::fabs(d)});
    return {r, c, d / m, h / m, k / m};
}

inline int solve4(double a, double b, double c, double d, double h, double k, Slots& out) {
    if (h == 0.0) return solve6(a, b, c, d, k, out);
    if (h + k < 0.0 || (a == 0.0 && b == 0.0)) return 0;
    const Scaled s = scaled4(a, b, c, d, h, k);
    double q4[5], y[4];
    int status[4];
    quartic4(s.c, s.d, s.h, s.k, q4);
    const int roots = plain_solver::qarsol(q4, 1, y, status);
    std::vector<double> sines;
    int count = 0;
    for (int i = 0; i < roots; ++i) {
        if (y[i] < 0.0 || y[i] > 1.000000000000001) continue;
        const Phi phi = phi4(s.c, std::min(1.0, y[i]));
        bool seen = false;
        for (const double earlier : sines) seen |= std::fabs(earlier - phi.sf) <= 1e-10;
        sines.push_back(phi.sf);
        const double R = phi.sf * s.k + s.h;
        if (seen || R < 0.0) continue;
        for (const Psi& one : psi4(s.c, s.d, phi.cf, phi.sf, R)) {
            double cp = 0.0, sp = 0.0;
            turn_back(a, b, s.r, one.cosine, one.sine, cp, sp);
            put(out, count++, clip(phi.cf), clip(phi.sf), cp, sp);
            if (count == 4) return 4;
        }
    }
    return count;
}

inline bool descend(const double* q4, double& y) {
    double p = 0.0;
    for (int turn = 0; turn < 13; ++turn) {
        p = plain_solver::value_of(q4, 4, y);
        if (std::fabs(p) <= 1e-15) return true;
        const double slope = ((4.0 * q4[4] * y + 3.0 * q4[3]) * y + 2.0 * q4[2]) * y + q4[1];
        const double bend = (12.0 * q4[4] * y + 6.0 * q4[3]) * y + 2.0 * q4[2];
        const double g = slope / p;
        const double root = std::sqrt(std::max(0.0, 9.0 * g * g - 12.0 * bend / p));
        const double step = std::fabs(g + root) > std::fabs(g - root) ? g + root : g - root;
        if (step == 0.0) return false;
        const double next = y - 4.0 / step;
        if (next == y) return false;
        y = next;
    }
    return false;
}

/// A single phi; false where the full solver is asked.
inline bool one_phi(const Scaled& s, Phi& phi) {
    if (s.c == 0.0) {
        const double quadratic[3] = {s.h * s.h - s.d * s.d, 2.0 * s.h * s.k, s.k * s.k};
        double y[2];
        if (plain_solver::qadsol(quadratic, y) < 2) return false;
        const double sine = y[0] >= 0.0 && y[0] <= 1.0 ? y[0] : y[1];
        if (sine < 0.0 || sine > 1.0) return false;
        phi = {std::sqrt(1.0 - sine * sine), sine};
        return true;
    }
    double q4[5];
    quartic4(s.c, s.d, s.h, s.k, q4);
    double y = s.c * s.c <= 1.0 ? 1.0 : 0.0;
    if (!descend(q4, y) || y < 0.0 || y > 1.0) return false;
    phi = phi4(s.c, y);
    return true;
}

inline int solve4_one(double a, double b, double c, double d, double h, double k, Slots& out) {
    if (h == 0.0) return solve6(a, b, c, d, k, out);
    if (h + k < 0.0 || (a == 0.0 && b == 0.0)) return 0;
    const Scaled s = scaled4(a, b, c, d, h, k);
    Phi phi{};
    if (!one_phi(s, phi)) return solve4(a, b, c, d, h, k, out);
    const double R = phi.sf * s.k + s.h;
    if (R < 0.0) return solve4(a, b, c, d, h, k, out);
    const auto found = psi4(s.c, s.d, phi.cf, phi.sf, R);
    if (found.empty()) return solve4(a, b, c, d, h, k, out);
    double cp = 0.0, sp = 0.0;
    turn_back(a, b, s.r, found[0].cosine, found[0].sine, cp, sp);
    put(out, 0, phi.cf, phi.sf, cp, sp);
    return 1;
}

inline int candidates5(double c, double d, double e, double h, double k, double z, double* cf,
                       double* sf) {
    if (z < std::fabs(h) + k) {
        return solve2(-d * d, 0.0, k * k, 2.0 * d * e, 2.0 * h * k, h * h - c * c - e * e, cf, sf);
    }
    if (d == 0.0) return 0;
    const double t = std::sqrt(std::max(0.0, 1.0 - (e / d) * (e / d)));
    const double R0 = t * k + h;
    if (R0 * R0 - c * c < 0.0) return 0;
    const double v = std::sqrt(R0 * R0 - c * c);
    cf[0] = (e - v) / d;
    cf[1] = (e + v) / d;
    for (int i = 0; i < 2; ++i) sf[i] = std::sqrt(std::max(0.0, 1.0 - cf[i] * cf[i]));
    return 2;
}

inline Psi psi5(double c, double w, double R, double z) {
    if (std::fabs(c) > z || R == 0.0) {
        const double m = std::sqrt(w * w + c * c);
        if (m == 0.0) return {1.0, 0.0};
        return {c / m, w / m};
    }
    const double cosine = clip(c / R);
    const double sine = std::sqrt(1.0 - cosine * cosine);
    return {cosine, w > 0.0 ? sine : -sine};
}

inline int solve5(double a, double b, double c, double d, double e, double h, double k,
                  Slots& out) {
    if (h + k < 0.0) return 0;
    const double r = std::sqrt(a * a + b * b);
    if (r == 0.0) return 0;
    for (double* one : {&a, &b, &c, &d, &e}) *one /= r;
    const double z = 1e-5 * std::fabs(d);
    double cf[4], sf[4];
    const int n = candidates5(c, d, e, h, k, z, cf, sf);
    int count = 0;
    for (int i = 0; i < n && count < 2; ++i) {
        const double R = sf[i] * k + h;
        if (sf[i] < 0.0 || cf[i] < 0.0 || cf[i] > 1.0 || R < 0.0) continue;
        const Psi one = psi5(c, e - cf[i] * d, R, z);
        double cp = 0.0, sp = 0.0;
        turn_back(a, b, 1.0, one.cosine, one.sine, cp, sp);
        put(out, count++, cf[i], sf[i], cp, sp);
    }
    return count;
}

}  // namespace plain_angles
