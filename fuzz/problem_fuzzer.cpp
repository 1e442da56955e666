// problem_fuzzer: any bytes as a table of problems: read, solved, printed and drawn.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "commands/solve/polynomial_picture.h"
#include "commands/solve/problem_table.h"
#include "commands/solve/solution_json.h"
#include "commands/solve/solution_text.h"
#include "commands/solve/solve_answer.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    bool is_drawn = false;  // one picture for each input: drawing is far slower than the rest
    const auto read = nmk_solve::read_problem_table(
        "fuzz.csv", text, nullptr, [&](const nmk_solve::Problem& problem, std::size_t line) {
            const nmk_solve::Answer answer = nmk_solve::solve_problem(problem);
            const std::string json = nmk_solve::answer_row(answer, line);
            if (nmk_solve::solution_text(answer, line).empty() ||
                json.find("nan") != std::string::npos || json.find("inf") != std::string::npos) {
                std::abort();
            }
            if (problem.kind == nmk_solve::ProblemKind::polynomial && !is_drawn) {
                is_drawn = true;
                nmk_solve::polynomial_picture(problem.numbers, answer);
            }
        });
    if (!read && read.error().message.empty()) {
        std::abort();
    }
    return 0;
}
