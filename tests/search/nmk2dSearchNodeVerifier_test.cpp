#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <random>

#include "search/plane_nodes_for_tests.h"

namespace {

using namespace nmk_search::plane;
using enum nmkSearchNodeVerifierResult;

const giBox2 everywhere(giPoint2(-1e308, -1e308), giPoint2(1e308, 1e308));

nmkSearchNodeVerifierResult verdict(const nmkSearchNodeVerifier& verifier, double x, double y) {
    return verifier.verify(node_at(0, 0), node_at(x, y));
}

TEST(nmk2dSearchNodeVerifier, accepts_the_box_with_its_edge_and_does_not_use_the_parent) {
    const nmk2dSearchNodeVerifier verifier(giBox2(giPoint2(0, 0), giPoint2(9, 5)));
    EXPECT_EQ(verifier.verify(Other(), node_at(9, 0)), accepted);
    EXPECT_EQ(verifier.verify(Other(), node_at(9.000001, 0)), refused_for_good);
    EXPECT_TRUE(verifier.is_in_bounds(node_at(0, 5)));
    EXPECT_FALSE(verifier.is_in_bounds(node_at(0, -1)));
}

TEST(nmk2dSearchNodeVerifierBlocked, refuses_for_good_what_is_out_of_bounds_or_blocked) {
    const giBox2 box(giPoint2(0, 0), giPoint2(9, 9));
    const std::vector<NodePointer> blocked{shared_node(3, 3)};
    for (const auto& iterator : {cursor_over(blocked), coiIterator_from_values(blocked)}) {
        const nmk2dSearchNodeVerifierBlocked verifier(box, iterator);
        EXPECT_EQ(verdict(verifier, 9, 9), accepted);
        EXPECT_EQ(verdict(verifier, 9.5, 9), refused_for_good);
        EXPECT_EQ(verdict(verifier, 3, 3 + 9e-6), refused_for_good);
        EXPECT_EQ(verdict(verifier, 3 + 9e-6, 3 + 9e-6), accepted);  // outside the circle
        EXPECT_EQ(verdict(verifier, 3, 3 + 2e-5), accepted);
        EXPECT_EQ(verdict(verifier, 3, 3), refused_for_good);  // asked a second time
    }
}

TEST(nmk2dSearchNodeVerifierBlocked, a_point_that_is_blocked_later_is_refused) {
    const auto nodes = std::make_shared<std::vector<NodePointer>>();
    const nmk2dSearchNodeVerifierBlocked verifier(
        everywhere, coiIterator<NodePointer>(std::make_unique<ListCursor>(nodes)));
    EXPECT_EQ(verdict(verifier, 1, 1), accepted);
    nodes->push_back(shared_node(1, 1));
    EXPECT_EQ(verdict(verifier, 1, 1), refused_for_good);
    nodes->clear();
    EXPECT_EQ(verdict(verifier, 1, 1), accepted);
}

TEST(nmk2dSearchNodeVerifierBlocked, starts_at_the_first_node_wherever_its_iterator_is) {
    const std::vector<NodePointer> blocked{shared_node(1, 1), shared_node(2, 2)};
    for (auto iterator : {cursor_over(blocked), coiIterator_from_values(blocked)}) {
        while (++iterator) continue;
        const nmk2dSearchNodeVerifierBlocked verifier(everywhere, iterator);
        EXPECT_EQ(verdict(verifier, 1, 1), refused_for_good);
    }
}

TEST(nmk2dSearchNodeVerifierBlocked, asks_a_node_with_an_equality_of_its_own) {
    class Odd : public nmk2dSearchNode {
      public:
        using nmk2dSearchNode::nmk2dSearchNode;

      protected:
        bool is_equal(const nmkSearchNode&) const override { return true; }
    };
    const nmk2dSearchNodeVerifierBlocked verifier(
        everywhere, coiIterator_from_values<NodePointer>({shared_node(1, 1)}));
    EXPECT_EQ(verifier.verify(node_at(0, 0), Odd(giPoint2(7, 7))), refused_for_good);
}

TEST(nmk2dSearchNodeVerifierBlocked, a_blocked_node_of_another_class_blocks_nothing) {
    const nmk2dSearchNodeVerifierBlocked verifier(
        everywhere, coiIterator_from_values<NodePointer>({std::make_shared<Other>()}));
    EXPECT_EQ(verdict(verifier, 1, 1), accepted);
}

TEST(nmk2dSearchNodeVerifierBlocked, may_be_copied) {
    const auto one = std::make_unique<nmk2dSearchNodeVerifierBlocked>(
        everywhere, coiIterator_from_values<NodePointer>({shared_node(1, 1)}));
    const nmk2dSearchNodeVerifierBlocked copy(*one);
    EXPECT_EQ(verdict(copy, 1, 1), refused_for_good);
}

// A coordinate near a lattice around `base`, within and around the tolerance of its neighbours.
double draw_coordinate(std::mt19937& random, double base) {
    const double lattice = base + static_cast<double>(random() % 4);
    const double jitter = (static_cast<double>(random() % 61) - 30.0) * 1e-6;
    switch (random() % 40) {
        case 0:
            return std::numeric_limits<double>::quiet_NaN();
        case 1:
            return std::numeric_limits<double>::max();
        case 2:
            return 1e18;
        default:
            return lattice + jitter;
    }
}

TEST(nmk2dSearchNodeVerifierBlocked, fixed_nodes_give_the_verdicts_of_a_walk) {
    const unsigned seed = 7;
    std::mt19937 random(seed);
    int refused = 0, verdicts = 0;
    for (const double base : {0.0, -2.0, 1e5, 1e10, 1e11, 3.6e11, 1e12, 1e18}) {
        std::vector<NodePointer> blocked;
        for (int i = 0; i < 40; ++i) {
            const double x = draw_coordinate(random, base);
            blocked.push_back(shared_node(x, draw_coordinate(random, -base)));
        }
        const nmk2dSearchNodeVerifierBlocked walked(everywhere, cursor_over(blocked));
        const nmk2dSearchNodeVerifierBlocked fixed(everywhere, coiIterator_from_values(blocked));
        for (int i = 0; i < 4000; ++i) {
            const double x = draw_coordinate(random, base);
            const double y = draw_coordinate(random, -base);
            const auto expected = verdict(walked, x, y);
            ASSERT_EQ(verdict(fixed, x, y), expected) << "seed " << seed << ' ' << x << ' ' << y;
            refused += expected == refused_for_good ? 1 : 0;
            ++verdicts;
        }
    }
    EXPECT_GT(refused, verdicts / 20);
    EXPECT_LT(refused, verdicts);
}

// Points on a lattice of 10 by 10 from a corner.
void add_lattice(std::vector<NodePointer>& nodes, double corner, double step_x, double step_y) {
    for (int column = 0; column < 10; ++column) {
        for (int row = 0; row < 10; ++row) {
            nodes.push_back(shared_node(corner + column * step_x, corner + row * step_y));
        }
    }
}

TEST(nmk2dSearchNodeVerifierBlocked,
     lattices_of_any_widths_in_any_order_give_the_verdicts_of_a_walk) {
    constexpr double wide = 1000.0, fine = 2e-5;
    using Widths = std::vector<std::pair<double, double>>;
    for (const Widths& lattices :
         {Widths{{wide, wide}, {fine, fine}, {fine, 4e-5}}, Widths{{fine, fine}, {wide, wide}},
          Widths{{1.0, 0.25}, {4.0, 4.0}, {1e14, 1e14}},
          Widths{{1.0 / 3, 0.1}, {0.0, 0.0}, {1e-4, 1e-4}}}) {
        std::vector<NodePointer> blocked;
        for (const auto& [step_x, step_y] : lattices) add_lattice(blocked, 5.0, step_x, step_y);
        const nmk2dSearchNodeVerifierBlocked walked(everywhere, cursor_over(blocked));
        const nmk2dSearchNodeVerifierBlocked fixed(everywhere, coiIterator_from_values(blocked));
        for (const auto& [x, y] : points_of(blocked)) {
            EXPECT_EQ(verdict(fixed, x, y), refused_for_good);
            for (const double off : {4e-6, 9e-6, -9.99e-6, 1.1e-5, 0.5}) {
                EXPECT_EQ(verdict(fixed, x + off, y), verdict(walked, x + off, y));
                EXPECT_EQ(verdict(fixed, x, y - off), verdict(walked, x, y - off));
            }
        }
    }
}

}  // namespace
