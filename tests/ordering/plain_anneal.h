// plain_anneal.h: the annealing schedule and its point and line problems, written plainly.
//
// Flat vectors, a remainder for each draw, the C library's exp and pow, no virtual calls. The
// library is compared with it to the last bit, and its time is measured in ratio to it.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

namespace plain {

struct Point {
    double x, y, z;
};

inline double distance(const Point& a, const Point& b) {
    const double dx = a.x - b.x, dy = a.y - b.y, dz = a.z - b.z;
    return std::sqrt(dx * dx + dy * dy + dz * dz);
}

inline double plan_distance(const Point& a, const Point& b) {
    const double dx = a.x - b.x, dy = a.y - b.y;
    return std::sqrt(dx * dx + dy * dy);
}

struct Generator {
    std::uint32_t word = 1;
    int draw() {
        word = word * 214013u + 2531011u;
        return static_cast<int>((word >> 16) & 0x7FFF);
    }
};

// The common part of the three problems. A copy would include the generator, so there is `take`.
template <class Problem>
struct Order {
    std::vector<int> items;
    Generator random;
    double length = -1.0;
    double candidate = -1.0;
    int first = -1;
    int second = -1;

    explicit Order(std::size_t n) : items(n) {}
    int n() const { return static_cast<int>(items.size()); }
    int item(int position) const { return items[static_cast<std::size_t>(position)]; }
    int& item(int position) { return items[static_cast<std::size_t>(position)]; }
    Problem& self() { return static_cast<Problem&>(*this); }

    double initialise() {
        for (int k = 0; k < n(); ++k) item(k) = k;
        self().clear_states();
        if (n() <= 3) return -1.0;
        return length = self().total();
    }

    double randomise() {
        for (int k = 0; k < n(); ++k) {
            const int r = random.draw() % n();
            std::swap(item(r), item(k));
        }
        return length = self().total();
    }

    void take(const Problem& other) {
        items = other.items;
        length = other.length;
        candidate = other.candidate;
        first = other.first;
        second = other.second;
        self().take_states(other);
    }

    void clear_states() {}
    void take_states(const Problem&) {}
};

struct Points : Order<Points> {
    std::vector<Point> points;

    explicit Points(const std::vector<Point>& p) : Order(p.size()), points(p) {}

    double d(int a, int b) const {
        return distance(points[static_cast<std::size_t>(a)], points[static_cast<std::size_t>(b)]);
    }

    double total() const {
        double sum = 0.0;
        for (int k = 1; k < n(); ++k) sum += d(item(k - 1), item(k));
        return sum;
    }

    double propose() {
        first = random.draw() % n();
        second = random.draw() % (n() - 3);
        while (std::abs(first - second) < 2) second++;
        if (first > second) std::swap(first, second);
        const int a = item(first), b = item(first + 1), c = item(second);
        if (second == n() - 1) {
            candidate = (d(a, c) - d(a, b)) + length;
        } else {
            const int e = item(second + 1);
            candidate = ((d(b, e) + d(a, c)) - (d(c, e) + d(a, b))) + length;
        }
        return candidate;
    }

    void accept() {
        for (int lo = first + 1, hi = second; lo < hi; ++lo, --hi) std::swap(item(lo), item(hi));
        length = candidate;
        candidate = -1.0;
        first = second = -1;
    }
};

struct Lines : Order<Lines> {
    std::vector<Point> starts, ends;
    std::vector<int> reversed;

    Lines(const std::vector<Point>& s, const std::vector<Point>& e)
        : Order(s.size()), starts(s), ends(e), reversed(s.size()) {}

    const Point& in(int a) const {
        const std::size_t k = static_cast<std::size_t>(a);
        return reversed[k] ? ends[k] : starts[k];
    }
    const Point& out(int a) const {
        const std::size_t k = static_cast<std::size_t>(a);
        return reversed[k] ? starts[k] : ends[k];
    }

    void clear_states() { std::fill(reversed.begin(), reversed.end(), 0); }
    void take_states(const Lines& other) { reversed = other.reversed; }

    double total() const {
        double sum = 0.0;
        for (int k = 0; k < n(); ++k) sum += distance(out(item(k)), in(item((k + 1) % n())));
        return sum;
    }

    double propose() {
        first = random.draw() % n();
        second = random.draw() % n();
        if (first == second) second = (second + 1) % n();
        const int a = item(first), b = item((first + 1) % n());
        const int c = item(second), e = item((second + 1) % n());
        candidate = ((distance(in(b), in(e)) + distance(out(a), out(c))) -
                     (distance(out(c), in(e)) + distance(out(a), in(b)))) +
                    length;
        if (candidate <= 0.0) candidate = 0.0;
        return candidate;
    }

    void reverse(int position) {
        int& flag = reversed[static_cast<std::size_t>(item(position))];
        flag = !flag;
    }

    void accept() {
        int lo = first + 1, hi = second;
        if (lo > hi) hi += n();
        for (; lo < hi; ++lo, --hi) {
            const int p = (n() + lo) % n(), q = (n() + hi) % n();
            std::swap(item(p), item(q));
            reverse(p);
            reverse(q);
        }
        if (lo == hi) reverse((n() + lo) % n());
        length = candidate;
        candidate = -1.0;
        first = second = -1;
    }
};

struct OneWay : Order<OneWay> {
    std::vector<Point> starts, ends;
    bool closed;
    int block = -1;

    OneWay(const std::vector<Point>& s, const std::vector<Point>& e, bool is_closed)
        : Order(s.size()), starts(s), ends(e), closed(is_closed) {}

    double d(int a, int b) const {
        return plan_distance(ends[static_cast<std::size_t>(a)],
                             starts[static_cast<std::size_t>(b)]);
    }

    double total() const {
        double sum = 0.0;
        for (int k = 1; k < n(); ++k) sum += d(item(k - 1), item(k));
        return closed ? sum + d(item(n() - 1), item(0)) : sum;
    }

    double propose() {
        first = random.draw() % n();
        second = random.draw() % n();
        if (first == second) second = (second + 1) % n();
        if (first > second) std::swap(first, second);
        const int i = first, j = second, m = n();
        double e = length;
        if (!closed) e += d(item(m - 1), item(0));
        block = random.draw() % std::min(j - i, (i - j) + m) + 1;
        const int L = block;
        const int a0 = item(i), ap = item((i - 1 + m) % m);
        const int al = item((i + L - 1) % m), an = item((i + L) % m);
        const int b0 = item(j), bp = item((j - 1 + m) % m);
        const int bl = item((j + L - 1) % m), bn = item((j + L) % m);
        double removed1, added1, removed2, added2;
        if (al == bp) {
            removed1 = d(al, an);
            added1 = d(bl, a0);
        } else {
            removed1 = d(al, an) + d(bp, b0);
            added1 = d(bl, an) + d(bp, a0);
        }
        if (ap == bl) {
            removed2 = d(ap, a0);
            added2 = d(al, b0);
        } else {
            removed2 = d(ap, a0) + d(bl, bn);
            added2 = d(ap, b0) + d(al, bn);
        }
        e += (added1 + added2) - (removed1 + removed2);
        if (!closed) {
            int p = 0, q = m - 1;
            if (i == 0 || i + L > m) {
                p = j - i;
            } else if (j == 0 || j + L > m) {
                p = ((i - j) + m) % m;
            }
            if (i + L > m - 1) {
                q = m - 1 + (j - i);
            } else if (j + L > m - 1) {
                q = (m - 1 + (i - j)) % m;
            }
            e -= d(item(q), item(p));
        }
        return candidate = e;
    }

    void accept() {
        for (int m = 0; m < block; ++m) {
            std::swap(item((first + m) % n()), item((second + m) % n()));
        }
        length = candidate;
    }
};

// The schedule. The problem starts with its items in the order of their numbers.
template <class Problem>
struct Anneal {
    Problem& state;
    Problem& best;
    Generator random;
    int iterations = 0;
    double best_energy = std::numeric_limits<double>::max();
    double current_energy = std::numeric_limits<double>::max();
    double start_temperature = std::numeric_limits<double>::lowest();

    Anneal(Problem& working, Problem& result) : state(working), best(result) {}

    void cycle(double t) {
        const double e = state.propose();
        if (!(current_energy > e)) {
            const double p =
                t == 0.0 ? 0.0
                         : 1.0 / std::pow((e - current_energy) * 0.10000000000000009 / t + 1.0,
                                          9.999999999999991);
            const double r = random.draw() / 32767.0;
            if (!(p > r)) return;
        }
        state.accept();
        current_energy = e;
    }

    void simulate() {
        const int n = state.n();
        const double e = state.initialise();
        best.take(state);
        best_energy = current_energy = e;
        if (e < 0.0) return;
        current_energy = start_temperature = state.randomise();
        int stall = 0, k = 0;
        for (; k < 1000000; ++k) {
            const double t = start_temperature * std::exp(k * -0.01);
            for (int m = 0; m < n; ++m) {
                cycle(t);
                if (best_energy > current_energy) {
                    best.take(state);
                    stall = 0;
                    best_energy = current_energy;
                }
            }
            if (++stall > 7500) break;
        }
        iterations += k;
        state.take(best);
        for (int step = 0; step < 7500; ++step) {
            for (int m = 0; m < n; ++m) cycle(0.0);
        }
        best.take(state);
        iterations += 7500;
    }
};

}  // namespace plain
