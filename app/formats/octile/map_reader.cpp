// map_reader: reads a grid map in the octile text format.

#include "formats/octile/map_reader.h"

#include <algorithm>

#include "text/ascii.h"
#include "text/escaped_text.h"
#include "text/number_reader.h"
#include "text/text_lines.h"

namespace nmk_octile {

namespace {

constexpr std::string_view free_letters = ".GS";
constexpr std::string_view blocked_letters = "@OTW";

/// The word before the first blank, and the text after it.
struct HeadLine {
    std::string_view word, value;
};

HeadLine split_head(std::string_view line) {
    const std::string_view text = nmk_text::trimmed(line);
    const std::size_t stop = std::min(text.find_first_of(" \t"), text.size());
    return {text.substr(0, stop), nmk_text::trimmed(text.substr(stop))};
}

/// Reads line after line; throws an Error without a file name.
class MapReader {
  public:
    explicit MapReader(std::string_view text) : m_text(text), m_lines(text) {}

    nmk_lattice::RoutePlane read() {
        read_head();
        check_size();
        nmk_lattice::RoutePlane plane({0.0, 0.0}, {0, 0}, {1.0, 1.0}, m_width, m_height);
        plane.is_map = true;
        for (int row = 0; row < m_height; ++row) {
            read_row(plane, row);
        }
        while (m_lines.next(m_line)) {
            if (!nmk_text::trimmed(m_line.text).empty()) {
                refuse("another row; expected the height of " + std::to_string(m_height));
            }
        }
        return plane;
    }

  private:
    [[noreturn]] void refuse(std::string message) const {
        throw nmk_text::Error{{}, m_line.number, std::move(message)};
    }

    void next_line(const std::string& expected) {
        if (!m_lines.next(m_line)) {
            refuse("the file ends early; expected " + expected);
        }
    }

    void read_head() {
        next_line("\"type octile\"");
        const HeadLine type = split_head(m_line.text);
        if (type.word != "type" || type.value != "octile") {
            refuse("cannot read " + nmk_text::quoted(nmk_text::trimmed(m_line.text)) +
                   "; expected \"type octile\"");
        }
        for (;;) {
            next_line("height, width and map");
            const HeadLine line = split_head(m_line.text);
            if (line.word == "map" && line.value.empty()) {
                break;
            }
            if (line.word == "height") {
                read_size(m_height, line);
            } else if (line.word == "width") {
                read_size(m_width, line);
            } else {
                refuse("cannot read " + nmk_text::quoted(nmk_text::trimmed(m_line.text)) +
                       "; expected height, width or map");
            }
        }
        if (m_height == 0 || m_width == 0) {
            refuse(std::string(m_height == 0 ? "height" : "width") +
                   " is missing; expected it before map");
        }
    }

    void read_size(int& size, const HeadLine& line) const {
        const std::string name(line.word);
        if (size != 0) {
            refuse("a second " + name + "; expected one");
        }
        const bool digits = !line.value.empty() &&
                            line.value.find_first_not_of("0123456789") == std::string_view::npos;
        const std::optional<double> value =
            digits ? nmk_text::read_number(line.value) : std::nullopt;
        if (!value || *value < 1.0) {
            refuse(name + " " + nmk_text::quoted(line.value) +
                   "; expected a whole number from 1 up");
        }
        if (*value > static_cast<double>(nmk_lattice::max_cells)) {
            refuse(name + " " + nmk_text::quoted(line.value) + "; at most " +
                   std::to_string(nmk_lattice::max_cells) + " cells can be searched");
        }
        size = static_cast<int>(*value);
    }

    /// The size of the text bounds the memory of the map.
    void check_size() const {
        const std::size_t cells =
            static_cast<std::size_t>(m_width) * static_cast<std::size_t>(m_height);
        if (cells > nmk_lattice::max_cells) {
            refuse(std::to_string(m_width) + " by " + std::to_string(m_height) +
                   " cells; at most " + std::to_string(nmk_lattice::max_cells) +
                   " cells can be searched");
        }
        if (cells > m_text.size()) {
            refuse("the file ends early; expected " + std::to_string(m_height) + " rows of " +
                   std::to_string(m_width) + " letters");
        }
    }

    void read_row(nmk_lattice::RoutePlane& plane, int row) {
        next_line("row " + std::to_string(row + 1) + " of " + std::to_string(m_height));
        const std::string_view letters = m_line.text;
        if (letters.size() != static_cast<std::size_t>(m_width)) {
            refuse(std::to_string(letters.size()) + " letters; expected the width of " +
                   std::to_string(m_width));
        }
        for (int column = 0; column < m_width; ++column) {
            const char letter = letters[static_cast<std::size_t>(column)];
            if (blocked_letters.find(letter) != std::string_view::npos) {
                plane.block({column, row});
            } else if (free_letters.find(letter) == std::string_view::npos) {
                refuse("unknown letter " + nmk_text::quoted({&letter, 1}) + " in column " +
                       std::to_string(column + 1) + "; expected one of . G S @ O T W");
            }
        }
    }

    std::string_view m_text;
    nmk_text::TextLines m_lines;
    nmk_text::TextLine m_line;
    int m_height = 0;
    int m_width = 0;
};

}  // namespace

bool is_octile_map(std::string_view text) {
    nmk_text::TextLine line;
    return nmk_text::TextLines(text).next(line) && split_head(line.text).word == "type";
}

nmk_text::Result<nmk_lattice::RoutePlane> read_octile_map(const std::string& file_name,
                                                          std::string_view text) {
    return nmk_text::value_or_error(file_name, [&] { return MapReader(text).read(); });
}

}  // namespace nmk_octile
