// generated_plane.h: nodes of the plane drawn from a seed, within and around the tolerance of each
// other, with nodes of other classes among them; each call that a search makes is recorded.
//
// Coordinates reach 1e18 and are sometimes infinite or NaN. Two further classes of node have an
// equality of their own and record each comparison.
#pragma once

#include <nmktoolbox/search.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace nmk_search::generated_plane {

using Log = std::vector<std::string>;
using NodePointer = std::shared_ptr<const nmkSearchNode>;

/// How often something is drawn, in percent.
struct Traits {
    const char* name;
    int wide = 0;        // nodes of the plane with an equality of their own
    int foreign = 0;     // nodes of another kind
    int extreme = 0;     // coordinates that are huge, infinite or NaN
    int moves = 0;       // pops at which the goal moves
    int base_scale = 0;  // coordinates are around 10 to the power of this
};

inline std::ostream& operator<<(std::ostream& out, const Traits& traits) {
    return out << traits.name;
}

/// The random source and the recorded calls. Two scenes of one seed draw the same.
class Scene {
  public:
    Scene(const Traits& its_traits, unsigned seed) : traits(its_traits), random(seed) {}

    std::size_t draw(std::size_t below) { return random() % below; }
    bool percent(int part) { return random() % 100 < static_cast<unsigned>(part); }

    double draw_coordinate(double from) {
        static constexpr std::array steps{0.0, 0.0, 1.0, -1.0, 0.5};
        static constexpr std::array jitters{0.0,  0.0,    3e-6,   -4e-6, 9e-6,
                                            1e-5, 1.1e-5, 2.5e-5, -5e-5};
        if (percent(traits.extreme)) {
            static const std::array extremes{1e18,   -1e18, 1e18 + 128,       1e300,       -0.0,
                                             3.6e11, 1e10,  double(INFINITY), std::nan("")};
            return extremes[draw(extremes.size())];
        }
        return from + steps[draw(steps.size())] + jitters[draw(jitters.size())];
    }

    void write(std::string call) { log.push_back(std::move(call)); }

    Traits traits;
    std::mt19937 random;
    Log log;
    int expansions = 0;
};

/// A node of the plane that is equal to every node of its column.
class Wide : public nmk2dSearchNode {
  public:
    Wide(giPoint2 at, Scene& in) : nmk2dSearchNode(at), scene(in) {}
    Scene& scene;

  protected:
    bool is_equal(const nmkSearchNode& other) const override;
};

/// A node that is not of the plane; equal to every other node but those its number does not divide.
class Foreign : public nmkSearchNode {
  public:
    Foreign(int its_number, Scene& in) : number(its_number), scene(in) {}
    double min_cost(const nmkSearchNode&) const override { return 0.5; }
    double min_cost(const nmkSearchGoal&) const override { return number; }

    int number;
    Scene& scene;

  protected:
    bool is_equal(const nmkSearchNode& other) const override;
};

/// The node in the record of a call: its point to the last bit, or its number.
inline std::string text_of(const nmkSearchNode& node) {
    if (const auto* foreign = dynamic_cast<const Foreign*>(&node)) {
        return "foreign " + std::to_string(foreign->number);
    }
    const auto* plane_node = dynamic_cast<const nmk2dSearchNode*>(&node);
    if (plane_node == nullptr) return "none";
    std::array<char, 80> text{};
    std::snprintf(text.data(), text.size(), "%a,%a", plane_node->point().x, plane_node->point().y);
    return text.data();
}

inline bool Wide::is_equal(const nmkSearchNode& other) const {
    scene.write("wide " + text_of(*this) + "==" + text_of(other));
    const auto* plane_node = dynamic_cast<const nmk2dSearchNode*>(&other);
    return plane_node != nullptr && std::abs(plane_node->point().x - point().x) < 0.25;
}

inline bool Foreign::is_equal(const nmkSearchNode& other) const {
    scene.write(text_of(*this) + "==" + text_of(other));
    const auto* foreign = dynamic_cast<const Foreign*>(&other);
    return foreign != nullptr && foreign->number % number == 0;
}

class Goal : public nmkSearchGoal {
  public:
    Goal(Scene& in, double x) : scene(in), target(x + 3.0) {}

    bool contains(const nmkSearchNode& node) const override {
        scene.write("goal " + text_of(node));
        return false;
    }
    double min_cost(const nmk2dSearchNode& node) const override {
        scene.write("h " + text_of(node));
        return std::abs(target - node.point().x);
    }
    bool overshoot_goal(const nmkSearchNode& node, const nmkSearchNodeGenerator&) override {
        scene.write("overshoot " + text_of(node));
        if (!scene.percent(scene.traits.moves)) return false;
        target += 0.5;
        return true;
    }

    Scene& scene;
    double target;
};

class Generator : public nmkSearchNodeGenerator {
  public:
    explicit Generator(Scene& in) : scene(in) {}

    void expand_node(const nmkSearchNode& node, coiFiller<NodePointer> filler) const override {
        scene.write("expand " + text_of(node));
        constexpr int max_expansions = 60;
        if (++scene.expansions > max_expansions) return;
        for (int i = 0; i < 5; ++i) filler.add(neighbour(node));
    }
    double find_x_value(double x) const override { return x + 1.0; }

  private:
    NodePointer neighbour(const nmkSearchNode& node) const {
        const auto* plane_node = dynamic_cast<const nmk2dSearchNode*>(&node);
        if (plane_node == nullptr || scene.percent(scene.traits.foreign)) {
            return std::make_shared<Foreign>(1 + static_cast<int>(scene.draw(12)), scene);
        }
        const double x = scene.draw_coordinate(plane_node->point().x);
        const giPoint2 at(x, scene.draw_coordinate(plane_node->point().y));
        if (scene.percent(scene.traits.wide)) return std::make_shared<Wide>(at, scene);
        return std::make_shared<nmk2dSearchNode>(at);
    }

    Scene& scene;
};

class Verifier : public nmkSearchNodeVerifier {
  public:
    explicit Verifier(Scene& in) : scene(in) {}

    nmkSearchNodeVerifierResult verify(const nmkSearchNode& parent,
                                       const nmkSearchNode& node) const override {
        scene.write("verify " + text_of(parent) + ">" + text_of(node));
        return static_cast<nmkSearchNodeVerifierResult>(scene.percent(80) ? 0 : scene.draw(3));
    }
    bool is_in_bounds(const nmkSearchNode&) const override { return true; }

    Scene& scene;
};

}  // namespace nmk_search::generated_plane
