// solve_problem.h: a problem of `nmk solve`: its kind and its numbers.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "shell/option_values.h"
#include "text/result.h"

namespace nmk_solve {

enum class ProblemKind {
    polynomial,
    root,
    extremum,
    angles1,
    angles2,
    angles3,
    angles4,
    angles4_one,
    angles5,
    angles6,
    normal
};

/// The name of a kind and its numbers.
struct KindFacts {
    ProblemKind kind;
    std::string_view name;
    std::size_t min_count, max_count;  // of the numbers
    std::string_view letters;          // of the numbers, for messages: "A B C"
    std::string_view about;            // what is solved; lines end with a line feed
    bool has_two_angles = false;
};

/// All kinds, in the order of ProblemKind.
std::span<const KindFacts> problem_kinds();

const KindFacts& facts_of(ProblemKind kind);

/// The kinds by their names.
std::span<const nmk_shell::Choice<const KindFacts*>> kind_choices();

/// The kind of this name; null for an unknown name.
const KindFacts* kind_of_name(std::string_view name);

/// "polynomial, root, ... or normal"
std::string kind_list();

struct Problem {
    ProblemKind kind = ProblemKind::polynomial;
    std::vector<double> numbers;
    bool certified = false;  // of a polynomial: prove every root instead of asking the solver
};

/// The problem of these words, or an Error. The numbers are finite.
nmk_text::Result<Problem> read_problem(const KindFacts& facts,
                                       std::span<const std::string_view> words);

}  // namespace nmk_solve
