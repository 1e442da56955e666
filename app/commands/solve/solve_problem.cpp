// solve_problem: a problem of `nmk solve`: its kind and its numbers.

#include "commands/solve/solve_problem.h"

#include <algorithm>
#include <cmath>

#include "text/escaped_text.h"
#include "text/number_reader.h"

namespace nmk_solve {

namespace {

constexpr KindFacts kinds[] = {
    {ProblemKind::polynomial, "polynomial", 2, 5, "C0 C1 [C2 [C3 [C4]]]"},
    {ProblemKind::root, "root", 4, 11, "LOW HIGH C0 C1 ..."},
    {ProblemKind::extremum, "extremum", 5, 11, "LOW HIGH C0 C1 C2 ..."},
    {ProblemKind::angles1, "angles1", 3, 3, "A B C"},
    {ProblemKind::angles2, "angles2", 6, 6, "A B C D E F"},
    {ProblemKind::angles3, "angles3", 9, 9, "A B C D E F G H K"},
    {ProblemKind::angles4, "angles4", 6, 6, "A B C D H K"},
    {ProblemKind::angles4_one, "angles4-one", 6, 6, "A B C D H K"},
    {ProblemKind::angles5, "angles5", 7, 7, "A B C D E H K"},
    {ProblemKind::angles6, "angles6", 5, 5, "A B C D K"},
    {ProblemKind::normal, "normal", 1, 1, "X"},
};

std::string counts(const KindFacts& facts) {
    if (facts.min_count == facts.max_count) {
        return std::to_string(facts.min_count) + (facts.min_count == 1 ? " number" : " numbers");
    }
    return std::to_string(facts.min_count) + " to " + std::to_string(facts.max_count) + " numbers";
}

}  // namespace

std::span<const KindFacts> problem_kinds() { return kinds; }

const KindFacts& facts_of(ProblemKind kind) { return kinds[static_cast<std::size_t>(kind)]; }

const KindFacts* kind_of_name(std::string_view name) {
    const auto* const found = std::find_if(std::begin(kinds), std::end(kinds),
                                           [&](const KindFacts& k) { return k.name == name; });
    return found == std::end(kinds) ? nullptr : found;
}

std::string kind_list() {
    std::string text;
    for (std::size_t i = 0; i < std::size(kinds); ++i) {
        text += (i == 0 ? "" : i + 1 == std::size(kinds) ? " or " : ", ");
        text += kinds[i].name;
    }
    return text;
}

nmk_text::Result<Problem> read_problem(const KindFacts& facts,
                                       std::span<const std::string_view> words) {
    const std::string name(facts.name);
    if (words.size() < facts.min_count || words.size() > facts.max_count) {
        return nmk_text::Error{{},
                               0,
                               name + " has " + std::to_string(words.size()) +
                                   (words.size() == 1 ? " number" : " numbers") + "; expected " +
                                   counts(facts) + ": " + std::string(facts.letters)};
    }
    Problem problem{facts.kind, {}};
    problem.numbers.reserve(words.size());
    for (const std::string_view word : words) {
        const std::optional<double> number = nmk_text::read_number(word);
        if (!number || !std::isfinite(*number)) {
            return nmk_text::Error{{},
                                   0,
                                   "cannot read " + nmk_text::quoted(word) + " as a number of " +
                                       name + "; expected a finite number with a decimal point"};
        }
        problem.numbers.push_back(*number);
    }
    const bool has_bracket = facts.kind == ProblemKind::root || facts.kind == ProblemKind::extremum;
    if (has_bracket && !(problem.numbers[0] < problem.numbers[1])) {
        return nmk_text::Error{{},
                               0,
                               name + " between " + nmk_text::quoted(words[0]) + " and " +
                                   nmk_text::quoted(words[1]) +
                                   "; expected the lower end before the upper"};
    }
    return problem;
}

}  // namespace nmk_solve
