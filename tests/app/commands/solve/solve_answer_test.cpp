// solve_answer: the answers of `nmk solve` satisfy their problems.

#include "commands/solve/solve_answer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace nmk_solve {
namespace {

Answer solve(std::string_view kind, std::vector<double> numbers) {
    return solve_problem({kind_of_name(kind)->kind, std::move(numbers)});
}

std::vector<double> firsts(const Answer& answer) {
    std::vector<double> result;
    for (const Solution& solution : answer.solutions) result.push_back(solution.values[0]);
    return result;
}

TEST(solve_answer, roots_are_ascending_and_a_double_root_is_listed_twice) {
    const Answer cubic = solve("polynomial", {2, -3, 0, 1});
    EXPECT_EQ(cubic.problem, "2 - 3 x + x^3 = 0");
    EXPECT_EQ(firsts(cubic), (std::vector<double>{-2, 1, 1}));
    EXPECT_EQ(firsts(solve("polynomial", {-1, 0, 0, 0, 1})), (std::vector<double>{-1, 1}));
    EXPECT_TRUE(solve("polynomial", {1, 0, 0, 0, 1}).solutions.empty());
    EXPECT_EQ(firsts(solve("polynomial", {6, -2})), (std::vector<double>{3}));
}

TEST(solve_answer, polynomials_are_written_in_the_usual_notation) {
    EXPECT_EQ(polynomial_text({1, -3, 2}), "1 - 3 x + 2 x^2");
    EXPECT_EQ(polynomial_text({0, 1, 0, -1}), "x - x^3");
    EXPECT_EQ(polynomial_text({-0.0005, 0, 1e20}), "-0.0005 + 1e+20 x^2");
    EXPECT_EQ(polynomial_text({0, 0, 0}), "0");
}

TEST(solve_answer, a_note_explains_a_doubtful_count) {
    EXPECT_NE(solve("polynomial", {0, 0, 0}).note.find("every x is a root"), std::string::npos);
    EXPECT_NE(solve("polynomial", {1, 0, 0, 1, 0}).note.find("one root is lost"),
              std::string::npos);
    EXPECT_NE(solve("polynomial", {1, 1, 1e300, 1e-10}).note.find("differ too much in size"),
              std::string::npos);
    EXPECT_EQ(solve("polynomial", {1, -3, 2}).note, "");
}

TEST(solve_answer, residuals_are_the_values_of_the_polynomial_at_the_roots) {
    const std::vector<double> coefficients = {-6.5, 11.25, -6, 1.5};
    for (const Solution& solution : solve("polynomial", coefficients).solutions) {
        const double x = solution.values[0];
        EXPECT_EQ(solution.residuals[0], ((1.5 * x - 6) * x + 11.25) * x - 6.5);
        EXPECT_LT(std::abs(solution.residuals[0]), 1e-12);
    }
}

TEST(solve_answer, a_bracket_has_its_root_or_its_extremum) {
    const Answer root = solve("root", {0, 2, -2, 0, 1});
    ASSERT_EQ(root.solutions.size(), 1U);
    EXPECT_NEAR(root.solutions[0].values[0], std::sqrt(2.0), 1e-9);
    EXPECT_EQ(firsts(solve("root", {1, 2, -1, 1})), (std::vector<double>{1}));
    const Answer lowest = solve("extremum", {0, 2, 1, -3, 2});
    ASSERT_EQ(lowest.solutions.size(), 1U);
    EXPECT_NEAR(lowest.solutions[0].values[0], 0.75, 1e-9);
    EXPECT_NEAR(lowest.solutions[0].values[1], -0.125, 1e-12);
    EXPECT_EQ(firsts(solve("extremum", {0, 2, 0, 0, 1})), (std::vector<double>{0}));
}

TEST(solve_answer, a_bracket_without_a_change_of_sign_has_a_note) {
    EXPECT_EQ(solve("root", {0, 2, 1, 0, 1}).note,
              "the values at the two ends do not differ in sign");
    EXPECT_EQ(solve("extremum", {1, 2, 1, 0, 1}).note,
              "the slopes at the two ends do not differ in sign");
    EXPECT_TRUE(solve("extremum", {1, 2, 1, 0, 1}).solutions.empty());
}

TEST(solve_answer, a_bracket_whose_values_overflow_has_no_solution_but_a_note) {
    for (const Answer& answer : {solve("root", {0, 1e300, -1, 0, 0, 1}),
                                 solve("extremum", {-1e300, 1e300, 1, 2, 3, 1, 1})}) {
        EXPECT_TRUE(answer.solutions.empty()) << answer.problem;
        EXPECT_EQ(answer.note, "values between the two ends overflow");
    }
}

TEST(solve_answer, roots_that_overflow_are_left_out_with_a_note) {
    const Answer answer = solve("polynomial", {0, 0.271387, -1.39129, -1.33154, -5.65657e-55});
    EXPECT_EQ(firsts(answer), (std::vector<double>{0}));
    EXPECT_EQ(answer.note,
              "the coefficients differ too much in size; roots that overflow are left out; the "
              "polynomial has 4 real roots; the solver lists 1");
}

struct MiscountedPolynomial {
    const char* name;
    std::vector<double> coefficients;
    const char* note;
};

std::ostream& operator<<(std::ostream& out, const MiscountedPolynomial& p) { return out << p.name; }

class solve_answer_miscount : public testing::TestWithParam<MiscountedPolynomial> {};

TEST_P(solve_answer_miscount, is_reported) {
    EXPECT_EQ(solve("polynomial", GetParam().coefficients).note, GetParam().note);
}

INSTANTIATE_TEST_SUITE_P(
    polynomials, solve_answer_miscount,
    testing::Values(
        MiscountedPolynomial{"roots_of_a_million",
                             {-1, 0, 1e-12},
                             "the polynomial has 2 real roots; the solver lists 0"},
        MiscountedPolynomial{"roots_of_a_thousand",
                             {-1, 0, 0, 0, 1e-12},
                             "the polynomial has 2 real roots; the solver lists 0"},
        MiscountedPolynomial{"four_roots_near_one",
                             {1.006011006, -4.018022006, 6.018011, -4.006, 1},
                             "the polynomial has 4 real roots; the solver lists 0"},
        MiscountedPolynomial{"two_complex_roots_listed_as_real",
                             {0.1, -0.314, 3, 0.389, -2.58e-67},
                             "the polynomial has 2 real roots; the solver lists 4; 2 listed values "
                             "are not roots"},
        MiscountedPolynomial{"a_parabola_taken_for_a_line",
                             {905697.9482286477, 0.09595245755019714, 2.8931614578161043e-06},
                             "the polynomial has no real root; the solver lists 1; 1 listed value "
                             "is not a root"},
        MiscountedPolynomial{"a_double_root_that_is_none",
                             {0.09, -0.6, 1},
                             "the polynomial has no real root; the solver lists 2"},
        MiscountedPolynomial{"three_roots_in_one", {0, 0, 0, 1}, ""},
        MiscountedPolynomial{"a_constant", {3, 0, 0}, ""}));

TEST(solve_answer, no_number_is_a_negative_zero) {
    for (const std::vector<double>& coefficients :
         {std::vector<double>{0, 0, 1}, {0, 0, 0, 1}, {0, 0, 0, 0, 1}}) {
        const Answer answer = solve("polynomial", coefficients);
        EXPECT_EQ(answer.solutions.size(), coefficients.size() - 1);
        for (const Solution& solution : answer.solutions) {
            EXPECT_FALSE(std::signbit(solution.values[0])) << answer.problem;
        }
    }
}

TEST(solve_answer, angles_whose_numbers_are_all_zero_have_a_note) {
    for (const KindFacts& facts : problem_kinds()) {
        if (!facts.name.starts_with("angles")) continue;
        const Answer answer = solve(facts.name, std::vector<double>(facts.min_count, 0.0));
        EXPECT_TRUE(answer.note.starts_with("all numbers are zero; every angle is a solution"))
            << facts.name;
        EXPECT_EQ(answer.note.ends_with("none is listed"), answer.solutions.empty());
    }
}

TEST(solve_answer, certified_roots_have_their_brackets_and_multiplicities) {
    const Answer answer = solve_problem({ProblemKind::polynomial, {-2, 5, -4, 1}, true});
    EXPECT_EQ(answer.value_names, (std::vector<std::string>{"x", "low", "high", "multiplicity"}));
    ASSERT_EQ(answer.solutions.size(), 2U);
    EXPECT_EQ(answer.solutions[0].values, (std::vector<double>{1, 1, 1, 2}));
    EXPECT_EQ(answer.solutions[1].values, (std::vector<double>{2, 2, 2, 1}));
    EXPECT_EQ(answer.real_roots->with_multiplicity, 3U);
    EXPECT_EQ(answer.note, "");
    EXPECT_NE(solve_problem({ProblemKind::polynomial, {0, 0}, true}).note, "");
}

TEST(solve_answer, an_extremum_whose_value_overflows_has_a_note) {
    const Answer answer = solve("extremum", {-1e-300, 1e300, 1, -1e300, 2.5});
    EXPECT_EQ(firsts(answer), (std::vector<double>{2e299}));
    EXPECT_EQ(answer.note, "the value at the extremum overflows");
}

TEST(solve_answer, angles_that_overflow_are_left_out_with_a_note) {
    const Answer answer = solve("angles5", {1e-300, 1e-16, 5e-324, 1e300, 1e-16, 1e-300, -1e-300});
    EXPECT_TRUE(answer.solutions.empty());
    EXPECT_EQ(answer.note,
              "the numbers differ too much in size; solutions that overflow are left out");
}

TEST(solve_answer, angles_of_random_systems_satisfy_their_equations) {
    constexpr unsigned seed = 5;
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> number(-1.0, 1.0);
    std::size_t solved = 0;
    for (const KindFacts& facts : problem_kinds()) {
        if (!facts.name.starts_with("angles")) continue;
        std::size_t of_kind = 0;
        for (int round = 0; round < 300; ++round) {
            std::vector<double> numbers;
            while (numbers.size() < facts.min_count) numbers.push_back(number(random));
            const Answer answer = solve(facts.name, numbers);
            for (const Solution& solution : answer.solutions) {
                ++of_kind;
                for (const double residual : solution.residuals) {
                    EXPECT_LT(std::abs(residual), 1e-3) << answer.problem << ", seed " << seed;
                }
                const double degrees = solution.values[2];
                EXPECT_NEAR(std::cos(degrees * std::acos(-1.0) / 180.0), solution.values[0], 1e-4);
            }
        }
        EXPECT_GT(of_kind, 30U) << facts.name;
        solved += of_kind;
    }
    EXPECT_GT(solved, 1000U);
}

TEST(solve_answer, a_solution_that_is_counted_but_does_not_exist_is_left_out_with_a_note) {
    // F and G are zero, and of the two directions that make the radius zero or touch it, the second
    // misses the quadrant by rounding.
    const Answer answer =
        solve("angles3",
              {-0.8578625043292338, 0.5138792890027534, 0.2399983747024928, -0.5138792890027534,
               -0.8578625043292338, 0, 0, -0.24273997354306764, 1.0401442210973704});
    EXPECT_EQ(answer.solutions.size(), 1U);
    for (const Solution& solution : answer.solutions) {
        for (const double value : solution.values) EXPECT_FALSE(std::isnan(value));
    }
    EXPECT_EQ(answer.note, "the solver counted a solution that does not exist; it is left out");
}

TEST(solve_answer, the_normal_distribution_is_listed_with_its_error) {
    const Answer answer = solve("normal", {1.96});
    ASSERT_EQ(answer.solutions.size(), 1U);
    EXPECT_NEAR(answer.solutions[0].values[0], 0.9750021, 1e-6);
    EXPECT_LT(std::abs(answer.solutions[0].residuals[0]), 7.5e-8);
    EXPECT_EQ(solve("normal", {1e308}).solutions[0].values[0], 1.0);
}

TEST(solve_answer, every_kind_accepts_hostile_numbers) {
    constexpr unsigned seed = 9;
    std::mt19937 random(seed);
    const double hostile[] = {0.0,    -0.0,  1.0,  -1.0, 1e-300, -1e-300, 1e300, -1e300,
                              5e-324, 1e-16, 1e16, 2.5,  -7.25,  1e-8,    1e8,   0.1};
    for (const KindFacts& facts : problem_kinds()) {
        for (int round = 0; round < 2000; ++round) {
            std::vector<double> numbers(facts.min_count +
                                        random() % (facts.max_count - facts.min_count + 1));
            for (double& n : numbers) n = hostile[random() % std::size(hostile)];
            const bool is_bracket = facts.name == "root" || facts.name == "extremum";
            if (is_bracket && !(numbers[0] < numbers[1])) continue;
            const Answer answer = solve(facts.name, numbers);
            EXPECT_LE(answer.solutions.size(), 4U);
            for (const Solution& solution : answer.solutions) {
                const bool has_note = !answer.note.empty() && facts.name == "extremum";
                for (const double value : solution.values) {
                    EXPECT_TRUE(std::isfinite(value) || has_note) << answer.problem;
                }
            }
        }
    }
}

}  // namespace
}  // namespace nmk_solve
