// dxf_samples.h: texts of DXF files, and what a test reads from them.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "formats/dxf/dxf_reader.h"

namespace nmk_dxf {

/// The groups of "0 LINE|8 A": pairs of a code and a value, as lines of a file.
inline std::string groups(const std::string& pairs) {
    std::string text;
    for (std::size_t begin = 0; begin < pairs.size();) {
        const std::size_t end = std::min(pairs.find('|', begin), pairs.size());
        const std::size_t blank = pairs.find(' ', begin);
        text += pairs.substr(begin, blank - begin) + "\n" +
                pairs.substr(blank + 1, end - blank - 1) + "\n";
        begin = end + 1;
    }
    return text;
}

/// A file with these entities, in units of this $INSUNITS.
inline std::string drawing_of(const std::string& entities, int units = 4) {
    return groups("0 SECTION|2 HEADER|9 $INSUNITS|70 " + std::to_string(units) +
                  "|0 ENDSEC|0 SECTION|2 ENTITIES") +
           groups(entities) + groups("0 ENDSEC|0 EOF");
}

inline nmk_text::Result<DxfDrawing> read(const std::string& text, double mm_of_unstated = 1.0) {
    return read_dxf("a.dxf", text, mm_of_unstated);
}

/// The only curve of a file with this entity; an empty handle where there is none.
inline ngkCurvePtr3 curve_of(const std::string& entity, int units = 4) {
    const auto drawing = read(drawing_of(entity, units));
    EXPECT_TRUE(drawing) << (drawing ? "" : drawing.error().text());
    if (!drawing) return {};
    EXPECT_EQ(drawing->curves.size(), 1U);
    return drawing->curves.empty() ? ngkCurvePtr3() : drawing->curves[0].curve;
}

inline std::string problem_of(const std::string& text) {
    const auto drawing = read(text);
    return drawing ? std::string() : drawing.error().text();
}

}  // namespace nmk_dxf
