// solution_json: the result of a problem, or of a table of them, as JSON for a program.

#include "commands/solve/solution_json.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "text/json_document.h"

namespace nmk_solve {

namespace {

using nmk_text::Json;

constexpr int schema = 1;

void add_numbers(Json& json, std::vector<std::string> names, const std::vector<double>& numbers) {
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        std::replace(names[i].begin(), names[i].end(), ' ', '_');
        json[names[i]] = numbers[i];
    }
}

/// Adds "problem", "solutions" and, if there is one, "note".
Json& add_answer(Json& json, const Answer& answer) {
    json["problem"] = answer.problem;
    json["solutions"] = Json::array();
    for (const Solution& solution : answer.solutions) {
        Json row;
        add_numbers(row, answer.value_names, solution.values);
        add_numbers(row, answer.residual_names, solution.residuals);
        json["solutions"].push_back(std::move(row));
    }
    if (!answer.note.empty()) {
        json["note"] = answer.note;
    }
    return json;
}

}  // namespace

std::string answer_document(const Answer& answer) {
    Json json = {{"schema", schema}};
    return nmk_text::json_document(add_answer(json, answer));
}

std::string answer_row(const Answer& answer, std::size_t line) {
    Json json = {{"line", line}};
    return nmk_text::json_line(add_answer(json, answer));
}

std::string table_opening() { return nmk_text::json_opening({{"schema", schema}}, "problems"); }

}  // namespace nmk_solve
