// walked_program.h: a reader of programs that knows nothing of the writer: it walks the words of
// each line, and notes every move.
#pragma once

#include <geometry/giPoint3.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace nmk_gcode {

struct ProgramMove {
    bool is_rapid;
    bool is_from_unknown;  // x and y were not given before
    giPoint3 from, to;     // mm
    double feed;           // mm per minute; of a move that is not rapid
    int tool;
};

struct WalkedProgram {
    std::vector<ProgramMove> moves;
    std::vector<std::string> comments;
    int stops = 0;               // M0
    int ends = 0;                // M30
    bool stops_exactly = false;  // G61
};

class ProgramWalk {
  public:
    explicit ProgramWalk(const std::string& text) {
        std::istringstream lines(text);
        std::string line;
        while (std::getline(lines, line)) {
            EXPECT_EQ(m_program.ends, line == "%" ? m_program.ends : 0)
                << "after the end: " << line;
            walk(line);
        }
    }
    WalkedProgram program() const { return m_program; }

  private:
    void walk(const std::string& line) {
        if (line == "%") {
            return;
        }
        std::string words;
        for (std::size_t i = 0; i < line.size(); ++i) {
            if (line[i] != '(') {
                words += line[i];
                continue;
            }
            const std::size_t close = line.find(')', i);
            ASSERT_NE(close, std::string::npos) << line;
            m_program.comments.push_back(line.substr(i + 1, close - i - 1));
            i = close;
        }
        std::istringstream stream(words);
        std::string word;
        std::map<char, double> axes;
        while (stream >> word) {
            char* end = nullptr;
            const double value = std::strtod(word.c_str() + 1, &end);
            ASSERT_EQ(*end, '\0') << line;
            // Without a point many controls count in the least step of an axis.
            const bool has_point = word.find('.') != std::string::npos;
            EXPECT_EQ(has_point, std::string("XYZF").find(word[0]) != std::string::npos) << line;
            take(word[0], value, axes, line);
        }
        if (!axes.empty()) {
            move(axes);
        }
    }

    void take(char letter, double value, std::map<char, double>& axes, const std::string& line) {
        switch (letter) {
            case 'X':
            case 'Y':
            case 'Z':
                axes[letter] = value * m_unit;
                break;
            case 'F':
                m_feed = value * m_unit;
                break;
            case 'T':
                m_tool = static_cast<int>(value);
                break;
            case 'S':
                break;
            case 'G':
                take_g(static_cast<int>(value), line);
                break;
            case 'M':
                m_program.stops += value == 0.0 ? 1 : 0;
                m_program.ends += value == 30.0 ? 1 : 0;
                break;
            default:
                ADD_FAILURE() << "unknown word in " << line;
        }
    }

    void take_g(int code, const std::string& line) {
        if (code == 0 || code == 1) {
            m_is_rapid = code == 0;
        } else if (code == 20 || code == 21) {
            m_unit = code == 20 ? 25.4 : 1.0;
        } else if (code == 90) {
            m_is_absolute = true;
        } else if (code == 61) {
            m_program.stops_exactly = true;
        } else {
            const bool is_plain =
                code == 17 || code == 40 || code == 49 || code == 80 || code == 94;
            EXPECT_TRUE(is_plain) << line;
        }
    }

    void move(const std::map<char, double>& axes) {
        ASSERT_TRUE(m_is_absolute);
        ASSERT_GT(m_unit, 0.0);
        giPoint3 to = m_at;
        for (const auto& [letter, value] : axes) {
            (letter == 'X' ? to.x : letter == 'Y' ? to.y : to.z) = value;
        }
        const bool is_in_plane = axes.count('X') + axes.count('Y') > 0;
        m_program.moves.push_back(
            {m_is_rapid, is_in_plane && !m_is_known, m_at, to, m_feed, m_tool});
        m_is_known = m_is_known || is_in_plane;
        m_at = to;
    }

    WalkedProgram m_program;
    giPoint3 m_at{0.0, 0.0, 0.0};
    bool m_is_known = false;
    bool m_is_rapid = true;
    bool m_is_absolute = false;
    double m_unit = 0.0;
    double m_feed = 0.0;
    int m_tool = 0;
};

inline WalkedProgram walked(const std::string& text) { return ProgramWalk(text).program(); }

}  // namespace nmk_gcode
