// electrode_report: what an archive has, as text and as JSON.

#include "commands/electrode/electrode_report.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <numeric>
#include <utility>

#include "text/escaped_text.h"
#include "text/json_document.h"
#include "text/number_format.h"
#include "text/text_columns.h"
#include "text/wrapped_text.h"

namespace nmk_electrode {

namespace {

using nmk_text::Json;

constexpr int schema = 1;

std::int64_t sum_of(const std::vector<ArchivedFile>& files) {
    return std::accumulate(files.begin(), files.end(), std::int64_t{0},
                           [](std::int64_t sum, const ArchivedFile& file) {
                               return sum + std::min(file.bytes, INT64_MAX - sum);
                           });
}

std::string bytes_text(const std::optional<std::int64_t>& bytes) {
    return bytes ? std::to_string(*bytes) : "missing";
}

std::string counted(std::size_t count, const std::string& thing) {
    return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

std::string summary(const ArchiveContents& contents) {
    return counted(contents.electrodes.size(), "electrode") + ", " +
           std::to_string(contents.entries) + (contents.entries == 1 ? " entry, " : " entries, ") +
           std::to_string(contents.bytes) + " bytes, version " +
           nmk_text::readable_number(contents.version);
}

Json files_json(const std::vector<ArchivedFile>& files) {
    Json list = Json::array();
    for (const ArchivedFile& file : files) {
        list.push_back({{"name", file.name}, {"bytes", file.bytes}});
    }
    return list;
}

Json bytes_json(const std::optional<std::int64_t>& bytes) { return bytes ? Json(*bytes) : Json(); }

const char* status_name(nmkTrodeArchiveStatus status) {
    constexpr const char* names[] = {"ok", "no_version", "newer_version", "missing_entry",
                                     "bad_contents"};
    return names[status];
}

/// The rows as columns; the first cells are on lines of their own where the table would be too
/// wide.
std::string table_text(std::vector<std::vector<std::string>> rows) {
    const auto is_wide = [](const std::string& line) {
        return nmk_text::character_count(line) > nmk_text::terminal_columns;
    };
    std::vector<std::string> lines = nmk_text::column_lines(rows);
    std::vector<std::string> names(rows.size());
    if (std::ranges::any_of(lines, is_wide)) {
        for (std::size_t i = 0; i < rows.size(); ++i)
            names[i] = std::exchange(rows[i][0], {}) + "\n";
        lines = nmk_text::column_lines(rows);
    }
    std::string text;
    for (std::size_t i = 0; i < rows.size(); ++i) text += names[i] + lines[i] + "\n";
    return text;
}

std::string status_text(const ArchiveContents& contents) {
    return "status " + std::to_string(contents.status) + " (" + status_name(contents.status) +
           "): " + contents.problem + "\n";
}

}  // namespace

std::string list_text(const ArchiveContents& contents) {
    std::vector<std::vector<std::string>> rows = {
        {"electrode", "geometry", "metadata", "data files", "bytes", "additional", "bytes"}};
    for (const ListedElectrode& each : contents.electrodes) {
        rows.push_back({nmk_text::line_text(each.name), bytes_text(each.geometry),
                        bytes_text(each.metadata), std::to_string(each.data.size()),
                        std::to_string(sum_of(each.data)), std::to_string(each.additional.size()),
                        std::to_string(sum_of(each.additional))});
    }
    const std::string text = table_text(std::move(rows)) + summary(contents) + "\n";
    return contents.problem.empty() ? text : text + status_text(contents);
}

std::string list_json(const ArchiveContents& contents) {
    Json electrodes = Json::array();
    for (const ListedElectrode& each : contents.electrodes) {
        electrodes.push_back({{"name", each.name},
                              {"geometry", bytes_json(each.geometry)},
                              {"metadata", bytes_json(each.metadata)},
                              {"data", files_json(each.data)},
                              {"additional", files_json(each.additional)}});
    }
    return nmk_text::json_document({{"schema", schema},
                                    {"file", contents.file.name},
                                    {"version", contents.version},
                                    {"entries", contents.entries},
                                    {"bytes", contents.bytes},
                                    {"electrodes", std::move(electrodes)}});
}

std::string verify_text(const ArchiveContents& contents) {
    const std::string name = nmk_text::line_text(contents.file.name) + ": ";
    if (contents.problem.empty()) return name + "sound: " + summary(contents) + "\n";
    return name + status_text(contents);
}

std::string verify_json(const ArchiveContents& contents) {
    const bool is_sound = contents.problem.empty();
    return nmk_text::json_document({{"schema", schema},
                                    {"file", contents.file.name},
                                    {"sound", is_sound},
                                    {"status", static_cast<int>(contents.status)},
                                    {"status_name", status_name(contents.status)},
                                    {"problem", is_sound ? Json() : Json(contents.problem)}});
}

}  // namespace nmk_electrode
