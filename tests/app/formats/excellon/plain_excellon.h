// plain_excellon.h: a second, plain reading of drill programs, to compare the real one with.
//
// Written from the facts of the format alone and only for the files of the tests: words are taken
// off a line with plain loops, coordinates are doubles in the unit of the file. It shares no code
// with the reader, and the number format is a parameter.
#pragma once

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <map>
#include <sstream>
#include <string>
#include <vector>

/// The number format of a file.
struct PlainFormat {
    bool trailing_kept = true;
    int whole_digits = 2;
    int decimals = 4;
};

/// One hole or slot, in hundred-thousandths of the file's unit: tool, x, y, end x, end y. The
/// ends of a slot are in ascending order, so that its direction does not matter; those of a hole
/// are equal.
using PlainCut = std::array<long long, 5>;

class PlainExcellon {
  public:
    explicit PlainExcellon(PlainFormat format) : m_format(format) {}

    std::vector<PlainCut> read(const std::string& text) {
        std::istringstream lines(text);
        std::string line;
        while (std::getline(lines, line)) {
            line = line.substr(0, line.find(';'));
            while (!line.empty() && std::isspace(static_cast<unsigned char>(line.back()))) {
                line.pop_back();
            }
            read_line(line);
        }
        return m_cuts;
    }

    /// The cuts in ascending order, to compare them whatever their order.
    static std::vector<PlainCut> sorted(std::vector<PlainCut> cuts) {
        std::sort(cuts.begin(), cuts.end());
        return cuts;
    }

  private:
    void read_line(const std::string& line) {
        if (line == "M48") m_header = true;
        if (line == "%" || line == "M95") m_header = false;
        if (line == "G90") m_incremental = false;
        if (line == "G91") m_incremental = true;
        if (line.empty() || m_header) return;
        if (line[0] == 'T') m_tool = std::atoi(line.c_str() + 1);
        if (line[0] == 'X' || line[0] == 'Y') cut(line);
        if (line[0] == 'R') repeat(line);
    }

    void cut(const std::string& line) {
        const std::size_t slot = line.find("G85");
        move_to(line.substr(0, slot));
        const double x = m_x, y = m_y;
        if (slot != std::string::npos) {
            move_to(line.substr(slot + 3));
        }
        add(x, y, m_x, m_y);
    }

    void repeat(const std::string& line) {
        const int count = std::atoi(line.c_str() + 1);
        for (int i = 0; i < count; ++i) {
            m_x += has(line, 'X') ? number(line, 'X') : 0.0;
            m_y += has(line, 'Y') ? number(line, 'Y') : 0.0;
            add(m_x, m_y, m_x, m_y);
        }
    }

    void move_to(const std::string& words) {
        if (has(words, 'X')) m_x = number(words, 'X') + (m_incremental ? m_x : 0.0);
        if (has(words, 'Y')) m_y = number(words, 'Y') + (m_incremental ? m_y : 0.0);
    }

    static bool has(const std::string& words, char letter) {
        return words.find(letter) != std::string::npos;
    }

    double number(const std::string& words, char letter) const {
        std::string digits;
        double sign = 1.0;
        for (std::size_t i = words.find(letter) + 1; i < words.size(); ++i) {
            if (words[i] == '-') {
                sign = -1.0;
            } else if (words[i] == '.' || std::isdigit(static_cast<unsigned char>(words[i]))) {
                digits += words[i];
            } else {
                break;
            }
        }
        if (digits.find('.') != std::string::npos) {
            return sign * std::strtod(digits.c_str(), nullptr);
        }
        const std::size_t width = static_cast<std::size_t>(m_format.whole_digits);
        const double value = std::strtod(digits.c_str(), nullptr);
        if (m_format.trailing_kept) {
            return sign * value / std::pow(10.0, m_format.decimals);
        }
        return sign * value *
               std::pow(10.0, static_cast<double>(width) - static_cast<double>(digits.size()));
    }

    void add(double x, double y, double x2, double y2) {
        const auto fixed = [](double value) { return std::llround(value * 1e5); };
        PlainCut cut{m_tool, fixed(x), fixed(y), fixed(x2), fixed(y2)};
        if (std::pair(cut[3], cut[4]) < std::pair(cut[1], cut[2])) {
            std::swap(cut[1], cut[3]);
            std::swap(cut[2], cut[4]);
        }
        m_cuts.push_back(cut);
    }

    PlainFormat m_format;
    std::vector<PlainCut> m_cuts;
    double m_x = 0.0;
    double m_y = 0.0;
    int m_tool = 0;
    bool m_header = false;
    bool m_incremental = false;
};
