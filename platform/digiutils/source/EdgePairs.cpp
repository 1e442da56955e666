#include "EdgePairs.h"

#include <exactmath/exact_arctangent.h>
#include <geometry/giVector3.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <set>
#include <utility>

namespace nmk_digiutils {

namespace {

constexpr double full_turn = 2.0 * std::numbers::pi;

// Not yet paired leaves, by angle and index.
using Angles = std::set<std::pair<double, int>>;

// The smaller of the two turns from one angle to the other.
double turn_between(double a, double b) {
    const double turn = std::fabs(a - b);
    return std::min(turn, full_turn - turn);
}

Angles::const_iterator nearest(const Angles& angles, double wanted) {
    auto after = angles.lower_bound({wanted, -1});
    auto before = after == angles.begin() ? std::prev(angles.end()) : std::prev(after);
    if (after == angles.end()) after = angles.begin();
    return turn_between(before->first, wanted) < turn_between(after->first, wanted) ? before
                                                                                    : after;
}

void pair_continuations(std::vector<Leaf>& leaves, double angle, std::vector<EdgePair>& pairs) {
    Angles backward;
    for (const Leaf& leaf : leaves) {
        if (!leaf.is_forward) backward.emplace(leaf.angle, leaf.index);
    }
    std::vector<bool> is_paired(leaves.size());
    for (const Leaf& leaf : leaves) {
        if (!leaf.is_forward || backward.empty()) continue;
        const double opposite = std::fmod(leaf.angle + std::numbers::pi, full_turn);
        const auto found = nearest(backward, opposite);
        if (!(turn_between(found->first, opposite) <= angle)) continue;
        pairs.push_back({leaf.index, found->second});
        is_paired[static_cast<std::size_t>(leaf.index)] = true;
        is_paired[static_cast<std::size_t>(found->second)] = true;
        backward.erase(found);
    }
    std::erase_if(
        leaves, [&](const Leaf& leaf) { return is_paired[static_cast<std::size_t>(leaf.index)]; });
}

void pair_around(std::vector<Leaf>& leaves, std::vector<EdgePair>& pairs) {
    std::sort(leaves.begin(), leaves.end(), [](const Leaf& a, const Leaf& b) {
        return std::pair(a.angle, a.index) < std::pair(b.angle, b.index);
    });
    std::vector<int> open;
    std::vector<bool> is_paired(leaves.size());
    // The second round closes what was opened before the full turn.
    for (std::size_t i = 0; i < 2 * leaves.size(); ++i) {
        const std::size_t at = i % leaves.size();
        const Leaf& leaf = leaves[at];
        if (!leaf.is_forward && i < leaves.size()) open.push_back(leaf.index);
        if (!leaf.is_forward || is_paired[at] || open.empty()) continue;
        pairs.push_back({leaf.index, open.back()});
        is_paired[at] = true;
        open.pop_back();
    }
}

}  // namespace

std::vector<EdgePair> pair_leaves(std::vector<Leaf> leaves, double angle) {
    std::vector<EdgePair> pairs;
    pair_continuations(leaves, angle, pairs);
    pair_around(leaves, pairs);
    return pairs;
}

double angle_about_edge(const giPoint3& low, const giPoint3& high, const giPoint3& third) {
    const giVector3 along = high - low;
    // The axis that the edge is farthest from.
    giVector3 axis(1.0, 0.0, 0.0);
    double least = std::fabs(along.x);
    if (std::fabs(along.y) < least) {
        axis = giVector3(0.0, 1.0, 0.0);
        least = std::fabs(along.y);
    }
    if (std::fabs(along.z) < least) axis = giVector3(0.0, 0.0, 1.0);
    const giVector3 across = along.cross(axis);
    const giVector3 up = along.cross(across);
    const giVector3 to_third = third - low;
    const double length = along.length();
    const double angle = nmk_exact::exact_atan2(to_third.dot(up), to_third.dot(across) * length);
    if (!std::isfinite(angle)) return 0.0;
    return angle < 0.0 ? angle + full_turn : angle;
}

}  // namespace nmk_digiutils
