// debug_picture.h: collects paths under labels and writes them as one SVG picture.
//
// The picture is seen down the z axis with y upwards, and is scaled so that its longer side has a
// fixed number of pixels. Each label is a group, in the order of first use.
#pragma once

#include <nmkarcline/nmkAbsPolyArcLineVecListIter.h>

#include <iosfwd>
#include <map>
#include <string>
#include <vector>

namespace nmk_arcline {

class DebugPicture {
  public:
    /// Every point of the path must be finite.
    void add(const std::string& label, const nmkAbsPolyArcLineVec& path, int colour, int weight);

    void write(std::ostream& out) const;

  private:
    struct Line {
        nmkAbsPolyArcLineVec path;
        int colour;
        int weight;
    };
    struct Group {
        std::string label;
        std::vector<Line> lines;
    };

    Group& group_of(const std::string& label);
    void write_line(std::ostream& out, const Line& line, double scale) const;

    std::vector<Group> m_groups;
    std::map<std::string, std::size_t> m_position_of;
    bool m_is_empty = true;
    double m_left = 0.0, m_right = 0.0, m_bottom = 0.0, m_top = 0.0;
};

}  // namespace nmk_arcline
