// polynomial_picture: the roots and turning points that the drawing of a polynomial marks.

#include "commands/solve/polynomial_picture.h"

#include <gtest/gtest.h>

#include <cmath>

#include "app/draw/drawn_elements.h"
#include "app/text/plain_syntax.h"
#include "commands/solve/solve_answer.h"
#include "draw/fitted_text.h"

namespace nmk_solve {
namespace {

using nmk_draw::drawn_elements;
using nmk_draw::DrawnElement;

std::string picture_of(const std::vector<double>& coefficients) {
    return polynomial_picture(coefficients, solve_polynomial(coefficients));
}

struct Curve {
    const char* name;
    std::vector<double> coefficients;
    std::size_t turning_points;

    friend std::ostream& operator<<(std::ostream& out, const Curve& curve) {
        return out << curve.name;
    }
};

class polynomial_picture_marks : public testing::TestWithParam<Curve> {};

TEST_P(polynomial_picture_marks, each_turning_point_and_names_them_in_the_legend) {
    const Curve& curve = GetParam();
    const std::string svg = picture_of(curve.coefficients);
    EXPECT_TRUE(plain_syntax::Xml::is_well_formed(svg));
    const bool in_legend = svg.find(">turning point<") != std::string::npos;
    EXPECT_EQ(in_legend, curve.turning_points > 0);
    EXPECT_EQ(drawn_elements(svg, "circle", "turning").size(),
              curve.turning_points + (in_legend ? 1U : 0U));
}

INSTANTIATE_TEST_SUITE_P(
    curves, polynomial_picture_marks,
    testing::Values(Curve{"a_line", {1, 2}, 0}, Curve{"a_parabola", {1, -2, 1}, 1},
                    Curve{"a_parabola_without_roots", {5, 0, 1}, 1},
                    Curve{"a_cubic", {6, -5, -2, 1}, 2}, Curve{"a_rising_cubic", {0, 1, 0, 1}, 0},
                    Curve{"a_saddle", {0, 0, 0, 1}, 0}, Curve{"a_saddle_aside", {-8, 12, -6, 1}, 0},
                    Curve{"a_quartic", {0, 0, -2, 0, 1}, 3},
                    Curve{"a_flat_quartic", {0, 0, 0, 0, 1}, 1},
                    Curve{"a_quartic_with_a_saddle", {0, 0, 0, -4, 1}, 1},
                    Curve{"a_constant", {3}, 0}));

TEST(polynomial_picture, marks_a_turning_point_where_the_curve_is_highest_or_lowest) {
    const std::string svg = picture_of({0, -3, 0, 1});  // turns at (-1, 2) and (1, -2)
    const std::vector<DrawnElement> turns = drawn_elements(svg, "circle", "turning");
    const std::vector<DrawnElement> roots = drawn_elements(svg, "circle", "root");
    ASSERT_EQ(turns.size(), 3U);
    ASSERT_EQ(roots.size(), 4U);  // -1.73, 0 and 1.73; and in the legend
    const double unit = (roots[2].number("cx") - roots[1].number("cx")) / std::sqrt(3.0);
    EXPECT_NEAR(turns[0].number("cx"), roots[1].number("cx") - unit, 0.02);
    EXPECT_NEAR(turns[1].number("cx"), roots[1].number("cx") + unit, 0.02);
    EXPECT_LT(turns[0].number("cy"), roots[1].number("cy"));
    EXPECT_GT(turns[1].number("cy"), roots[1].number("cy"));
}

TEST(polynomial_picture, the_mark_of_a_turning_point_is_seen_around_that_of_a_root) {
    const std::string svg = picture_of({1, -2, 1});
    const DrawnElement turn = drawn_elements(svg, "circle", "turning").front();
    const DrawnElement root = drawn_elements(svg, "circle", "root").front();
    EXPECT_EQ(turn.number("cx"), root.number("cx"));
    EXPECT_EQ(turn.number("cy"), root.number("cy"));
    EXPECT_GT(turn.number("r"), root.number("r") + 1.0);
    EXPECT_LT(svg.find("class=\"turning\""), svg.find("class=\"root\""));
}

TEST(polynomial_picture, a_long_polynomial_is_cut_with_an_ellipsis) {
    const double long_number = 1.2345678901234567e-5;
    const std::string svg =
        picture_of({long_number, long_number, long_number, long_number, long_number});
    const DrawnElement heading = drawn_elements(svg, "text", "").front();
    EXPECT_TRUE(heading.text.ends_with("\xE2\x80\xA6")) << heading.text;
    EXPECT_LE(nmk_draw::text_width(heading.text, 24.0), 894.0);
}

}  // namespace
}  // namespace nmk_solve
