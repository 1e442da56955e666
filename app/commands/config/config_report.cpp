// config_report: what was found of a configuration, as text and as JSON.

#include "commands/config/config_report.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "text/escaped_text.h"
#include "text/json_document.h"

namespace nmk_config {

namespace {

using nmk_text::Json;
using nmk_text::line_text;

constexpr int schema = 1;

std::string row(const std::string& name, const std::string& value) {
    return "  " + name + std::string(9 - name.size(), ' ') + line_text(value) + "\n";
}

std::string place_text(const DocumentProblem& problem) {
    if (problem.line == 0) return problem.message;
    return std::to_string(problem.line) + ":" + std::to_string(problem.column) + ": " +
           problem.message;
}

Json json_of(const DocumentProblem& problem) {
    const auto number = [](int value) { return value > 0 ? Json(value) : Json(); };
    return {{"line", number(problem.line)},
            {"column", number(problem.column)},
            {"message", problem.message}};
}

Json json_of(const OtherFile& other) {
    return {{"file", other.file},
            {"version", other.version > 0 ? Json(other.version) : Json()},
            {"reason", other.reason}};
}

}  // namespace

std::string facts_text(const ConfigFacts& facts) {
    std::string text = line_text(facts.file) + "\n" + row("chosen", facts.reason);
    if (!facts.root.empty()) text += row("root", facts.root);
    if (facts.version) text += row("version", std::to_string(*facts.version));
    if (facts.problem) text += row("problem", place_text(*facts.problem));
    if (!facts.others.empty()) text += "Not chosen\n";
    std::size_t width = 0;
    for (const OtherFile& other : facts.others) {
        width = std::max(width, line_text(other.file).size());
    }
    for (const OtherFile& other : facts.others) {
        const std::string file = line_text(other.file);
        text += "  " + file + std::string(width - file.size() + 2, ' ') + other.reason + "\n";
    }
    return text;
}

std::string verdict_text(const ConfigFacts& facts) {
    if (!facts.problem) {
        return line_text(facts.file) + ": valid, version " + std::to_string(*facts.version) + "\n";
    }
    const std::string separator = facts.problem->line > 0 ? ":" : ": ";
    return line_text(facts.file + separator + place_text(*facts.problem)) + "\n";
}

std::string facts_json(const ConfigFacts& facts, const std::optional<VersionRange>& versions) {
    Json json = {{"schema", schema}};
    json["versions"] =
        versions ? Json{{"least", versions->least}, {"greatest", versions->greatest}} : Json();
    json["file"] = facts.file;
    json["reason"] = facts.reason;
    json["root"] = facts.root.empty() ? Json() : Json(facts.root);
    json["version"] = facts.version ? Json(*facts.version) : Json();
    json["problem"] = facts.problem ? json_of(*facts.problem) : Json();
    json["others"] = Json::array();
    for (const OtherFile& other : facts.others) json["others"].push_back(json_of(other));
    return nmk_text::json_document(json);
}

}  // namespace nmk_config
