// plain_angles3: one angle, the conic, and the elimination for two angles, written down one
// sentence after the other. The results of the solver must be the same to the last bit.
//
// Inputs are finite and of ordinary size; no loop has a bound.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "solver/plain_angle_refinement.h"
#include "solver/plain_quadratic_and_quartic.h"

namespace plain_angles {

inline double clip(double x) { return std::min(1.0, std::max(-1.0, x)); }

inline int solve1(double a, double b, double c, double* cosines, double* sines) {
    const double s = a * a + b * b;
    const double d = s - c * c;
    if (s == 0.0 || d <= -1e-5 * s) return 0;
    if (d > 0.0) {
        const double w = std::sqrt(d) / s;
        cosines[0] = clip(c * a / s - w * b);
        sines[0] = clip(c * b / s + w * a);
        cosines[1] = clip(c * a / s + w * b);
        sines[1] = clip(c * b / s - w * a);
        return 2;
    }
    double r = 1.0 / std::sqrt(s);
    if (c < 0.0) r = -r;
    cosines[0] = clip(r * a);
    sines[0] = clip(r * b);
    return 1;
}

inline int solve2(double A, double B, double G, double D, double E, double F, double* cosines,
                  double* sines) {
    const bool direct = std::fabs(E) <= std::fabs(D);
    if (!direct) {
        std::swap(A, G);
        std::swap(D, E);
    }
    double* first = direct ? cosines : sines;
    double* second = direct ? sines : cosines;
    const double c[5] = {A + D + F, 2.0 * (B + E), 2.0 * (2.0 * G + F - A), 2.0 * (E - B),
                         A - D + F};
    double t[4];
    int status[4];
    const int roots = plain_solver::qarsol(c, 1, t, status);
    int count = 0;
    for (int i = 0; i < roots; ++i) {
        bool seen = false;
        for (int j = 0; j < i; ++j) {
            seen |= std::fabs(t[i] - t[j]) < 1e-8 &&
                    std::signbit(t[i] + 0.0) == std::signbit(t[j] + 0.0);
        }
        if (seen) continue;
        const double u = 2.0 / (1.0 + t[i] * t[i]);
        first[count] = u - 1.0;
        second[count] = u * t[i];
        ++count;
    }
    if (roots < 4 && status[roots] != 0) {
        first[count] = -1.0;
        second[count] = 0.0;
        ++count;
    }
    return count;
}

using Slots = std::array<std::array<double, 4>, 4>;  // cos phi, sin phi, cos psi, sin psi

inline void put(Slots& out, int slot, double cf, double sf, double cp, double sp) {
    const auto i = static_cast<std::size_t>(slot);
    out[0][i] = cf;
    out[1][i] = sf;
    out[2][i] = cp;
    out[3][i] = sp;
}

/// The elimination. `found` are the phi with their psi; a flag says that psi is open.
class Second {
  public:
    explicit Second(const System& its) : m_s(its) {}

    int solve(Slots& out) {
        int kept = 0;
        if (std::fabs(m_s.W()) <= 1e-10 * std::max(1.0, m_s.h + m_s.k)) {
            if (!parallel()) return 0;
        } else if (m_s.h == 0.0) {
            if (!closed()) return 0;
        } else if (numeric()) {
            for (const Found& f : m_found) put(out, kept++, f.cf, f.sf, f.cp, f.sp);
            return kept;
        }
        if (m_found.size() > 2) return 0;
        return close(out);
    }

  private:
    struct Found {
        double cf, sf, cp = 1.0, sp = 0.0;
        bool flag = false;
    };

    bool parallel() {
        double p = 0.0;
        if (std::fabs(m_s.a) > std::fabs(m_s.b)) {
            p = m_s.d / m_s.a;
        } else {
            if (m_s.b == 0.0) return false;
            p = m_s.e / m_s.b;
        }
        const double L = m_s.c * p * m_s.k - m_s.f;
        if (m_s.h == 0.0) {
            if (L == 0.0) return false;
            const double cf = -m_s.g / L;
            if (cf <= 0.0 || cf > 1.0) return false;
            m_found.push_back({cf, std::sqrt(std::max(0.0, 1.0 - cf * cf)), 1.0, 0.0, true});
            m_single = true;
            return true;
        }
        double c[4], t[4];
        const int n = solve2(0.0, L, 0.0, m_s.c * p * m_s.h, m_s.g, 0.0, c, t);
        for (int i = 0; i < n; ++i) {
            if (c[i] < 0.0 || t[i] < 0.0 || t[i] * m_s.k + m_s.h < 0.0) continue;
            m_found.push_back({c[i], t[i], 1.0, 0.0, true});
        }
        if (m_found.empty() || m_found.size() > 2) return false;
        m_single = m_found.size() == 1 || m_found[0].cf == m_found[1].cf;
        return true;
    }

    bool rejected() const {
        const double T = m_s.f * m_s.f - m_s.g * m_s.g, U = 2.0 * m_s.c * m_s.f * m_s.k;
        const double V = m_s.c * m_s.c * m_s.k * m_s.k;
        const double P1 = m_s.a * m_s.a * T - m_s.a * m_s.d * U + m_s.d * m_s.d * V;
        const double P2 = 2.0 * m_s.a * m_s.b * T - (m_s.b * m_s.d + m_s.a * m_s.e) * U +
                          2.0 * m_s.c * m_s.c * m_s.k * m_s.k * m_s.d * m_s.e;
        const double P3 = m_s.b * m_s.b * T - m_s.b * m_s.e * U + m_s.e * m_s.e * V;
        const double P4 = -m_s.g * m_s.g * m_s.c * m_s.c;
        const double H = 2.0 * P1 * P3 - P2 * P2 + 2.0 * P1 * P4 - 2.0 * P3 * P3 - 2.0 * P3 * P4;
        return H * H - 4.0 * (P4 * P4 + 2.0 * P3 * P4 + P3 * P3) *
                           (P1 * P1 + P2 * P2 - 2.0 * P1 * P3 + P3 * P3) <
               -1e-10;
    }

    bool closed() {
        if (rejected()) return false;
        const double ag = m_s.a * m_s.g, bg = m_s.b * m_s.g, kW = m_s.k * m_s.W();
        const double P = m_s.P(), Q = m_s.Q();
        const double c[3] = {ag * ag + bg * bg - kW * kW,
                             2.0 * (Q * m_s.a * m_s.g + P * m_s.b * m_s.g),
                             Q * Q + P * P + kW * kW};
        double roots[2];
        const int n = plain_solver::qadsol(c, roots);
        for (int i = 0; i < n; ++i) {
            const double cf = roots[i];
            if (cf < 0.0 || cf > 1.0) continue;
            const double sf = std::sqrt(1.0 - cf * cf);
            if (sf * m_s.k < 0.0) continue;
            m_found.push_back({cf, sf});
            Found& last = m_found.back();
            if (sf < 1e-6 * std::min({1.0, m_s.sa, m_s.sr})) {
                last = {1.0, 0.0, 1.0, 0.0, false};
            } else if (i == 1 && cf == roots[0]) {
                m_single = true;
                for (Found& f : m_found) f.flag = true;
            } else {
                psi(last, -m_s.b * m_s.g - cf * P, cf * Q + m_s.a * m_s.g);
            }
        }
        return true;
    }

    void psi(Found& f, double u, double v) const {
        f.flag = u * u + v * v <= 1e-5;
        if (f.flag) return;
        double m = std::sqrt(u * u + v * v);
        if (m_s.W() < 0.0) m = -m;
        f.cp = u / m;
        f.sp = v / m;
    }

    /// Returns true when what was found near the pole is the result.
    bool numeric() {
        Phi low{1.0, 0.0};
        if (m_s.h < 0.0) low = from_sine(-m_s.h / m_s.k);
        const double z = std::min(
            std::fabs(1e-5 / m_s.sa),
            std::fabs(std::sqrt((m_s.a * m_s.a + m_s.b * m_s.b) / (m_s.d * m_s.d + m_s.e * m_s.e)) *
                      1e-5 / (m_s.k * m_s.sr)));
        if (std::fabs(m_s.c) <= z && m_s.h > 0.0) {
            double cp[2], sp[2];
            const int n = solve1(m_s.d * m_s.h, m_s.e * m_s.h, m_s.g - m_s.f, cp, sp);
            for (int i = 0; i < n; ++i) {
                const double v = m_s.a * cp[i] + m_s.b * sp[i];
                const double sf = v == 0.0 ? 0.0 : -m_s.c / v;
                if (sf <= 0.0 || sf >= 0.01) continue;
                m_found.push_back({std::sqrt(std::max(0.0, 1.0 - sf * sf)), sf, cp[i], sp[i]});
            }
            if (m_found.size() == 2) return true;
            if (m_found.size() == 1) low = from_sine(m_found[0].sf + 1e-5);
        }
        search(low);
        if (m_found.size() > 2) return false;
        for (Found& f : m_found) psi(f, m_s.A1({f.cf, f.sf}), m_s.A2({f.cf, f.sf}));
        return false;
    }

    void record(const Phi& phi) { m_found.push_back({phi.cf, phi.sf}); }

    void search(Phi low) {
        double at_low = m_s.F(low);
        while (at_low == 0.0) {
            record(low);
            if (m_found.size() > 2) return;
            low = from_sine(low.sf + 1e-5);
            at_low = m_s.F(low);
        }
        Phi high{0.0, 1.0};
        double at_high = m_s.F(high);
        while (at_high == 0.0) {
            record(high);
            if (m_found.size() > 2) return;
            high = from_cosine(high.cf + 1e-5);
            at_high = m_s.F(high);
        }
        if ((at_low < 0.0) != (at_high < 0.0)) {
            record(refined(m_s, {low, at_low, false}, {high, at_high, false}));
            return;
        }
        between({low, at_low, false}, {high, at_high, false});
    }

    void between(const End& low, const End& high) {
        for (const Phi& phi : turning_points()) {
            if (phi.sf < low.phi.sf || phi.cf < high.phi.cf) continue;
            const bool already = !m_found.empty();
            const double value = m_s.F(phi);
            if (value == 0.0) {
                record(phi);
            } else if ((value < 0.0) != (low.value < 0.0)) {
                if (already) return m_found.resize(3);
                return split(low, {phi, value, true}, high);
            }
        }
        if (m_found.size() > 2) return;
        for (const Phi& phi : slopes()) {
            if (!(phi.cf > high.phi.cf) || !(phi.sf > low.phi.sf)) continue;
            const double value = m_s.F(phi);
            if (value == 0.0) {
                record(phi);
            } else if ((value < 0.0) != (low.value < 0.0)) {
                return split(low, {phi, value, true}, high);
            }
        }
    }

    void split(const End& low, const End& middle, const End& high) {
        record(refined(m_s, low, middle));
        record(refined(m_s, middle, high));
    }

    std::vector<Phi> turning_points() const {
        const double x = m_s.c * m_s.e * m_s.k + m_s.f * m_s.b,
                     y = m_s.c * m_s.d * m_s.k + m_s.f * m_s.a;
        const double P = m_s.P(), Q = m_s.Q(), kW = m_s.k * m_s.W();
        const double c[3] = {x * x + y * y - kW * kW, 2.0 * (y * Q + x * P),
                             Q * Q + P * P + kW * kW};
        double u[2];
        const int n = plain_solver::qadsol(c, u);
        std::vector<Phi> all;
        for (int i = 0; i < n; ++i) {
            if (std::fabs(u[i]) >= 1.0) continue;
            all.push_back({std::sqrt(std::max(0.0, (1.0 + u[i]) / 2.0)),
                           std::sqrt(std::max(0.0, (1.0 - u[i]) / 2.0))});
        }
        return all;
    }

    std::vector<Phi> slopes() const {
        const double ab = m_s.a * m_s.a + m_s.b * m_s.b, adbe = m_s.a * m_s.d + m_s.b * m_s.e;
        double c[4], t[4];
        const int n = solve2(0.0, ab * m_s.f - adbe * m_s.c * m_s.k, 0.0, -adbe * m_s.c * m_s.h,
                             -ab * m_s.g, 0.0, c, t);
        std::vector<Phi> all;
        for (int i = 0; i < n; ++i) all.push_back({c[i], t[i]});
        return all;
    }

    int close(Slots& out) const {
        int kept = 0;
        for (const Found& f : m_found) {
            const double R = f.sf * m_s.k + m_s.h;
            if (R < 0.0) continue;
            if (!f.flag) {
                put(out, kept++, f.cf, f.sf, f.cp, f.sp);
                continue;
            }
            double c[2], t[2];
            bool first = R <= 0.005;
            int n = open(first, f, R, c, t);
            if (n == 0) {
                first = !first;
                n = open(first, f, R, c, t);
            }
            if (m_single) {
                for (int i = 0; i < n; ++i) put(out, i, f.cf, f.sf, c[i], t[i]);
                return n;
            }
            if (n == 0) continue;
            int best = 0;
            if (n == 2 && left(!first, f, R, c[1], t[1]) < left(!first, f, R, c[0], t[0])) best = 1;
            put(out, kept++, f.cf, f.sf, c[best], t[best]);
        }
        return kept;
    }

    int open(bool first, const Found& f, double R, double* c, double* t) const {
        return first ? solve1(f.sf * m_s.a, f.sf * m_s.b, -m_s.c * f.cf, c, t)
                     : solve1(R * m_s.d, R * m_s.e, m_s.g - m_s.f * f.cf, c, t);
    }

    double left(bool first, const Found& f, double R, double cp, double sp) const {
        return first ? std::fabs((m_s.a * cp + m_s.b * sp) * f.sf + m_s.c * f.cf)
                     : std::fabs((m_s.d * cp + m_s.e * sp) * R + m_s.f * f.cf - m_s.g);
    }

    const System& m_s;
    std::vector<Found> m_found;
    bool m_single = false;
};

}  // namespace plain_angles
