// The order in which records are popped, for scores of every size and sign.
#include <gtest/gtest.h>
#include <nmktoolbox/search.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <random>
#include <vector>

namespace {

using NodePointer = std::shared_ptr<const nmkSearchNode>;

// A node with a score, equal to itself alone.
class ScoredNode : public nmkSearchNode {
  public:
    explicit ScoredNode(double its_score) : score(its_score) {}
    double min_cost(const nmkSearchNode&) const override { return 0.0; }
    double min_cost(const nmkSearchGoal&) const override { return score; }

    double score;

  private:
    bool is_equal(const nmkSearchNode& other) const override { return this == &other; }
};

// The root has all scored nodes as neighbours, and these have none.
class Fan : public nmkSearchNodeGenerator {
  public:
    void expand_node(const nmkSearchNode& node, coiFiller<NodePointer> filler) const override {
        if (&node != root.get()) return;
        for (const auto& neighbour : scored_nodes) filler.add(neighbour);
    }
    double find_x_value(double x) const override { return x; }

    std::shared_ptr<ScoredNode> root = std::make_shared<ScoredNode>(0.0);
    std::vector<std::shared_ptr<ScoredNode>> scored_nodes;
};

class Everywhere : public nmkSearchNodeVerifier {
  public:
    nmkSearchNodeVerifierResult verify(const nmkSearchNode&, const nmkSearchNode&) const override {
        return nmkSearchNodeVerifierResult::accepted;
    }
    bool is_in_bounds(const nmkSearchNode&) const override { return true; }
};

// Never reached; keeps the nodes in the order in which they are popped.
class Popped : public nmkSearchGoal {
  public:
    bool contains(const nmkSearchNode&) const override { return false; }
    bool overshoot_goal(const nmkSearchNode& node, const nmkSearchNodeGenerator&) override {
        nodes.push_back(&node);
        return false;
    }

    std::vector<const nmkSearchNode*> nodes;
};

std::vector<double> scores_of_every_kind() {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double largest = std::numeric_limits<double>::max();
    constexpr double denormal = std::numeric_limits<double>::denorm_min();
    return {0.0, -0.0, 1.0,       -1.0,      infinity, -infinity, largest, -largest, denormal,
            2.0, -2.0, -denormal, 1.0 / 3.0, -0.0,     0.0,       1e-300,  -1e-300};
}

}  // namespace

TEST(nmkAStarSearch, pops_scores_of_every_size_and_sign_in_order_and_the_oldest_of_equal_ones) {
    const unsigned seed = 20240611;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const std::vector<double> scores = scores_of_every_kind();
    const auto fan = std::make_shared<Fan>();
    for (int i = 0; i < 500; ++i) {
        const double score = scores[random() % scores.size()];
        fan->scored_nodes.push_back(std::make_shared<ScoredNode>(score));
    }
    const auto goal = std::make_shared<Popped>();
    std::vector<NodePointer> route;
    nmkAStarSearch search(fan, std::make_shared<Everywhere>(), fan->root, goal);
    search.perform(coiFiller_from_container(route));

    auto sorted = fan->scored_nodes;
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const auto& a, const auto& b) { return a->score < b->score; });
    ASSERT_EQ(goal->nodes.size(), sorted.size() + 1);
    for (std::size_t i = 0; i < sorted.size(); ++i) EXPECT_EQ(goal->nodes[i + 1], sorted[i].get());
    EXPECT_TRUE(route.empty());
}
