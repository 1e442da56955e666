// solve_problem: a problem of `nmk solve`: its kind and its numbers.

#include "commands/solve/solve_problem.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

#include "text/escaped_text.h"
#include "text/number_reader.h"

namespace nmk_solve {

namespace {

constexpr KindFacts kinds[] = {
    {ProblemKind::polynomial, "polynomial", 2, 5, "C0 C1 [C2 [C3 [C4]]]",
     "real roots of C0 + C1 x + ... + C4 x^4 = 0, ascending"},
    {ProblemKind::root, "root", 4, 11, "LOW HIGH C0 C1 ...",
     "the root of a polynomial between LOW and HIGH"},
    {ProblemKind::extremum, "extremum", 5, 11, "LOW HIGH C0 C1 C2 ...",
     "its highest or lowest point between LOW and HIGH"},
    {ProblemKind::angles1, "angles1", 3, 3, "A B C", "A cos t + B sin t = C"},
    {ProblemKind::angles2, "angles2", 6, 6, "A B C D E F",
     "A cos^2 t + B cos t sin t + C sin^2 t + D cos t + E sin t + F = 0"},
    {ProblemKind::angles3, "angles3", 9, 9, "A B C D E F G H K",
     "sin phi (A cos psi + B sin psi) + C cos phi = 0,\n"
     "F cos phi + (D cos psi + E sin psi) R = G",
     true},
    {ProblemKind::angles4, "angles4", 6, 6, "A B C D H K",
     "sin phi (A cos psi + B sin psi) + C cos phi = 0,\nR (A sin psi - B cos psi) = D", true},
    {ProblemKind::angles4_one, "angles4-one", 6, 6, "A B C D H K",
     "the same, but only one solution if a direct method finds it", true},
    {ProblemKind::angles5, "angles5", 7, 7, "A B C D E H K",
     "R (A cos psi + B sin psi) = C,\nR (A sin psi - B cos psi) + D cos phi = E", true},
    {ProblemKind::angles6, "angles6", 5, 5, "A B C D K", "angles4 with H = 0", true},
    {ProblemKind::normal, "normal", 1, 1, "X",
     "the standard normal distribution: the probability of at most X"},
};

constexpr auto choices = [] {
    std::array<nmk_shell::Choice<const KindFacts*>, std::size(kinds)> result{};
    for (std::size_t i = 0; i < std::size(kinds); ++i) {
        result[i] = {kinds[i].name, &kinds[i]};
    }
    return result;
}();

std::string counts(const KindFacts& facts) {
    if (facts.min_count == facts.max_count) {
        return std::to_string(facts.min_count) + (facts.min_count == 1 ? " number" : " numbers");
    }
    return std::to_string(facts.min_count) + " to " + std::to_string(facts.max_count) + " numbers";
}

}  // namespace

std::span<const KindFacts> problem_kinds() { return kinds; }

std::span<const nmk_shell::Choice<const KindFacts*>> kind_choices() { return choices; }

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
