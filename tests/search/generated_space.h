// generated_space.h: spaces drawn from a seed that record each call of a search.
//
// A maze is a directed graph of numbered nodes. Everything that the contract leaves to a caller is
// drawn: small whole costs, so that there are many ties; an h that is NaN or infinite;
// equality that is neither symmetric nor transitive; verifiers that refuse for good or for one
// parent; goals that move, and goals that move but report that they did not.
#pragma once

#include <nmktoolbox/search.h>

#include <cmath>
#include <cstddef>
#include <limits>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace nmk_search::generated {

using Log = std::vector<std::string>;
using NodePointer = std::shared_ptr<const nmkSearchNode>;

/// What is drawn, in percent where nothing else is said.
struct Traits {
    const char* name;
    int nodes = 30;
    int branches = 4;
    int costs = 3;           // steps and h are whole numbers below this
    int not_numbers = 0;     // h values that are NaN or infinite
    int loose_equality = 0;  // nodes that equal another one too, in one direction
    int refused = 10;        // verdicts 1
    int refused_once = 10;   // verdicts 2
    int moves = 0;           // pops at which the goal moves and reports it
    int silent_moves = 0;    // pops at which it moves and does not report it
    int throws = 0;          // pops at which it throws
};

inline std::ostream& operator<<(std::ostream& out, const Traits& traits) {
    return out << traits.name;
}

/// The space and the calls made to it. Two mazes of one seed are the same.
class Maze {
  public:
    Maze(const Traits& its_traits, unsigned its_seed) : traits(its_traits), random(its_seed) {
        const auto n = static_cast<std::size_t>(traits.nodes);
        for (std::size_t i = 0; i < n; ++i) draw_node(n);
        for (std::size_t i = 0; i < n * n; ++i) {
            steps.push_back(draw_cost());
            verdicts.push_back(percent(traits.refused) ? 1 : percent(traits.refused_once) ? 2 : 0);
        }
        goal_node = draw(n);
    }

    std::size_t draw(std::size_t below) { return random() % below; }
    bool percent(int part) { return random() % 100 < static_cast<unsigned>(part); }
    double draw_cost() { return static_cast<double>(draw(static_cast<std::size_t>(traits.costs))); }
    double draw_h() {
        if (!percent(traits.not_numbers)) return draw_cost();
        return percent(50) ? std::nan("") : std::numeric_limits<double>::infinity();
    }

    /// The goal moves: some scores change.
    void move_goal() {
        for (int i = 0; i < 3; ++i) h[draw(h.size())] = draw_h();
    }

    void write(std::string call) { log.push_back(std::move(call)); }

    Traits traits;
    std::mt19937 random;
    Log log;
    std::vector<std::vector<std::size_t>> neighbours;
    std::vector<double> h;
    std::vector<std::size_t> also_equals;
    std::vector<double> steps;
    std::vector<int> verdicts;
    std::size_t goal_node = 0;

  private:
    void draw_node(std::size_t n) {
        std::vector<std::size_t> drawn;
        for (int i = 0; i < traits.branches; ++i) drawn.push_back(draw(n));
        neighbours.push_back(drawn);
        h.push_back(draw_h());
        also_equals.push_back(percent(traits.loose_equality) ? draw(n) : n);
    }
};

class MazeNode : public nmkSearchNode {
  public:
    MazeNode(Maze& in, std::size_t its_number) : maze(in), number(its_number) {}

    double min_cost(const nmkSearchNode& other) const override {
        const std::size_t from = static_cast<const MazeNode&>(other).number;
        maze.write("step " + std::to_string(from) + ">" + std::to_string(number));
        return maze.steps[from * maze.h.size() + number];
    }
    double min_cost(const nmkSearchGoal&) const override {
        maze.write("h " + std::to_string(number));
        return maze.h[number];
    }

    Maze& maze;
    std::size_t number;

  protected:
    bool is_equal(const nmkSearchNode& other) const override {
        const std::size_t its = static_cast<const MazeNode&>(other).number;
        maze.write(std::to_string(number) + "==" + std::to_string(its));
        return its == number || its == maze.also_equals[number];
    }
};

inline std::size_t number_of(const nmkSearchNode& node) {
    return static_cast<const MazeNode&>(node).number;
}

class Goal : public nmkSearchGoal {
  public:
    explicit Goal(Maze& in) : maze(in) {}

    bool contains(const nmkSearchNode& node) const override {
        maze.write("goal " + std::to_string(number_of(node)));
        return number_of(node) == maze.goal_node;
    }
    bool overshoot_goal(const nmkSearchNode& node, const nmkSearchNodeGenerator&) override {
        maze.write("overshoot " + std::to_string(number_of(node)));
        if (maze.percent(maze.traits.throws)) throw std::runtime_error("thrown");
        if (maze.percent(maze.traits.silent_moves)) {
            maze.move_goal();
            return false;
        }
        if (!maze.percent(maze.traits.moves)) return false;
        maze.move_goal();
        return true;
    }

    Maze& maze;
};

class Generator : public nmkSearchNodeGenerator {
  public:
    explicit Generator(Maze& in) : maze(in) {}

    void expand_node(const nmkSearchNode& node, coiFiller<NodePointer> filler) const override {
        maze.write("expand " + std::to_string(number_of(node)));
        for (const std::size_t next : maze.neighbours[number_of(node)]) {
            filler.add(std::make_shared<MazeNode>(maze, next));
        }
    }
    double find_x_value(double x) const override { return x + 1.0; }

    Maze& maze;
};

class Verifier : public nmkSearchNodeVerifier {
  public:
    explicit Verifier(Maze& in) : maze(in) {}

    nmkSearchNodeVerifierResult verify(const nmkSearchNode& parent,
                                       const nmkSearchNode& node) const override {
        const auto* from = dynamic_cast<const MazeNode*>(&parent);
        const std::size_t row = from == nullptr ? 0 : from->number;
        const int verdict =
            from == nullptr ? 0 : maze.verdicts[row * maze.h.size() + number_of(node)];
        maze.write("verify " + (from == nullptr ? "none" : std::to_string(row)) + ">" +
                   std::to_string(number_of(node)));
        return static_cast<nmkSearchNodeVerifierResult>(verdict);
    }
    bool is_in_bounds(const nmkSearchNode&) const override { return true; }

    Maze& maze;
};

}  // namespace nmk_search::generated
