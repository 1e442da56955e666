// tsplib_reader.cpp: see tsplib_reader.h.

#include "formats/tsplib/tsplib_reader.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "formats/job/job_length.h"
#include "formats/job/toolless_job.h"
#include "text/ascii.h"
#include "text/escaped_text.h"
#include "text/number_format.h"
#include "text/number_reader.h"
#include "text/text_lines.h"

namespace nmk_tsplib {

namespace {

/// Keywords without influence on the points.
constexpr std::array<std::string_view, 6> ignored_keywords = {
    "NAME", "COMMENT", "NODE_COORD_TYPE", "DISPLAY_DATA_TYPE", "EDGE_WEIGHT_FORMAT", "CAPACITY"};

/// Takes the text up to the next blank off its front.
std::string_view take_word(std::string_view& text) {
    text = nmk_text::trimmed(text);
    const std::size_t stop = std::min(text.find_first_of(" \t"), text.size());
    const std::string_view word = text.substr(0, stop);
    text.remove_prefix(stop);
    return word;
}

/// Reads line after line; throws an Error without a file name.
class InstanceReader {
  public:
    InstanceReader(std::string_view text, nmk_job::JobUnits units)
        : m_lines(text), m_units(units) {}

    std::vector<nmk_job::JobItem> read() {
        bool has_section = false;
        while (m_lines.next(m_line)) {
            const std::string_view text = nmk_text::trimmed(m_line.text);
            if (text == "EOF") {
                break;
            }
            if (text == "NODE_COORD_SECTION" || text == "NODE_COORD_SECTION:") {
                if (has_section) {
                    refuse("a second NODE_COORD_SECTION; expected one");
                }
                has_section = true;
            } else if (has_section) {
                read_node(text);
            } else if (!text.empty()) {
                read_specification(text);
            }
        }
        if (!has_section) {
            refuse("NODE_COORD_SECTION is missing; expected the points of the instance");
        }
        check_count();
        return std::move(m_items);
    }

  private:
    [[noreturn]] void refuse(std::string message) const {
        throw nmk_text::Error{{}, m_line.number, std::move(message)};
    }

    void read_specification(std::string_view text) {
        const std::size_t stop = std::min(text.find_first_of(": \t"), text.size());
        const std::string_view keyword = text.substr(0, stop);
        std::string_view value = nmk_text::trimmed(text.substr(stop));
        if (value.starts_with(':')) {
            value = nmk_text::trimmed(value.substr(1));
        }
        if (keyword == "TYPE") {
            read_type(value);
        } else if (keyword == "DIMENSION") {
            read_dimension(value);
        } else if (keyword == "EDGE_WEIGHT_TYPE") {
            read_weight_type(value);
        } else if (std::find(ignored_keywords.begin(), ignored_keywords.end(), keyword) ==
                   ignored_keywords.end()) {
            refuse("cannot read " + nmk_text::quoted(text) + " before the NODE_COORD_SECTION");
        }
    }

    void read_type(std::string_view value) const {
        if (value.substr(0, value.find_first_of(" \t")) != "TSP") {
            refuse("TYPE " + nmk_text::quoted(value) + "; expected TSP");
        }
    }

    void read_dimension(std::string_view value) {
        const std::optional<double> dimension = nmk_text::read_number(value);
        if (!dimension || value.find_first_not_of("0123456789") != std::string_view::npos) {
            refuse("cannot read the DIMENSION " + nmk_text::quoted(value) +
                   "; expected a whole number");
        }
        if (*dimension > static_cast<double>(nmk_job::max_items)) {
            refuse("DIMENSION " + nmk_text::quoted(value) + "; at most " +
                   std::to_string(nmk_job::max_items) + " points can be ordered");
        }
        m_dimension = static_cast<std::size_t>(*dimension);
    }

    void read_weight_type(std::string_view value) const {
        if (value != "EUC_2D" && value != "CEIL_2D") {
            refuse("EDGE_WEIGHT_TYPE " + nmk_text::quoted(value) + "; expected EUC_2D or CEIL_2D");
        }
    }

    void read_node(std::string_view text) {
        if (text.empty()) {
            return;
        }
        if (m_dimension && m_items.size() == *m_dimension) {
            refuse("more points than the DIMENSION of " + std::to_string(*m_dimension));
        }
        if (m_items.size() == nmk_job::max_items) {
            refuse("more than " + std::to_string(nmk_job::max_items) + " points");
        }
        const std::string_view name = take_word(text);
        const std::optional<double> number = nmk_text::read_number(name);
        const std::optional<double> x = nmk_text::read_coordinate(take_word(text));
        const std::optional<double> y = nmk_text::read_coordinate(take_word(text));
        if (!number || name.find_first_not_of("0123456789") != std::string_view::npos || !x || !y ||
            !nmk_text::trimmed(text).empty()) {
            refuse("cannot read " + nmk_text::quoted(nmk_text::trimmed(m_line.text)) +
                   " as a node; expected its number and two coordinates from -1e9 to 1e9");
        }
        m_largest_name = std::max(m_largest_name, *number);
        check_name(*number);
        nmk_job::JobItem item;
        item.start = giPoint3(nmk_job::millimetres_of(*x, m_units),
                              nmk_job::millimetres_of(*y, m_units), 0.0);
        m_items.push_back(item);
    }

    /// Collects the numbers; at the end each must be there once.
    void check_name(double number) {
        if (number < 1.0 || number > static_cast<double>(nmk_job::max_items)) {
            refuse("node number " + nmk_text::exact_number(number) +
                   "; expected 1 to the DIMENSION");
        }
        m_names.push_back(static_cast<std::uint32_t>(number));
    }

    void check_count() {
        if (m_dimension && m_items.size() != *m_dimension) {
            refuse(std::to_string(m_items.size()) + (m_items.size() == 1 ? " point" : " points") +
                   "; expected the " + std::to_string(*m_dimension) + " of the DIMENSION");
        }
        std::sort(m_names.begin(), m_names.end());
        const auto twice = std::adjacent_find(m_names.begin(), m_names.end());
        if (twice != m_names.end()) {
            refuse("node " + std::to_string(*twice) + " is defined twice");
        }
        if (m_largest_name > static_cast<double>(m_items.size())) {
            refuse("node number " + nmk_text::exact_number(m_largest_name) + "; expected 1 to " +
                   std::to_string(m_items.size()) + ", the number of points");
        }
    }

    nmk_text::TextLines m_lines;
    nmk_job::JobUnits m_units;
    nmk_text::TextLine m_line;
    std::optional<std::size_t> m_dimension;
    double m_largest_name = 0.0;
    std::vector<std::uint32_t> m_names;
    std::vector<nmk_job::JobItem> m_items;
};

}  // namespace

nmk_text::Result<nmk_job::MachiningJob> read_tsplib(const std::string& file_name, std::string text,
                                                    std::optional<nmk_job::JobUnits> units) {
    return nmk_job::read_toolless_job(nmk_job::JobFormat::tsplib, file_name, std::move(text), units,
                                      [](std::string_view all, nmk_job::JobUnits of_file) {
                                          return InstanceReader(all, of_file).read();
                                      });
}

}  // namespace nmk_tsplib
