// dxf_reader: reads the curves of an ASCII DXF file.

#include "formats/dxf/dxf_reader.h"

#include <algorithm>

#include "formats/dxf/dxf_entity.h"
#include "formats/dxf/dxf_polyline.h"
#include "formats/dxf/dxf_shapes.h"
#include "formats/dxf/dxf_units.h"
#include "text/ascii.h"
#include "text/escaped_text.h"

namespace nmk_dxf {

namespace {

using ReadShape = Shape (*)(const DxfEntity& entity, double mm);

struct ShapeReader {
    std::string_view name;
    ReadShape read;
};

constexpr ShapeReader shape_readers[] = {{"LINE", line_of},
                                         {"CIRCLE", circle_of},
                                         {"ARC", arc_of},
                                         {"LWPOLYLINE", light_polyline_of},
                                         {"SPLINE", spline_of}};

/// Walks the sections of one file; throws an Error without a file name.
class DrawingReader {
  public:
    DrawingReader(std::string_view text, double mm_of_unstated)
        : m_groups(text), m_mm(mm_of_unstated) {}

    DxfDrawing read() {
        advance();
        while (!m_group.is(0, "EOF")) {
            if (!m_group.is(0, "SECTION")) refuse(m_group.line, expected("SECTION or EOF"));
            advance();
            read_section();
        }
        return std::move(m_drawing);
    }

  private:
    void advance() {
        if (!m_groups.next(m_group)) {
            refuse(m_groups.line(), "the file ends without EOF; expected a whole DXF file");
        }
    }

    std::string expected(const std::string& what) const {
        return "group " + std::to_string(m_group.code) + " " + nmk_text::quoted(m_group.value) +
               "; expected " + what;
    }

    void read_section() {
        if (m_group.code != 2) refuse(m_group.line, expected("group 2 with the name of a section"));
        const std::string_view name = m_group.value;
        advance();
        if (name == "HEADER") {
            read_header();
        } else if (name == "ENTITIES") {
            read_entities();
        } else {
            while (!m_group.is(0, "ENDSEC")) skip_to_next_section();
        }
        advance();
    }

    void skip_to_next_section() {
        if (m_group.is(0, "EOF")) refuse(m_group.line, "EOF inside a section; expected ENDSEC");
        advance();
    }

    void read_header() {
        while (!m_group.is(0, "ENDSEC")) {
            const bool is_unit = m_group.is(9, "$INSUNITS");
            skip_to_next_section();
            if (is_unit && m_group.code == 70) take_unit();
        }
    }

    void take_unit() {
        const std::optional<double> mm = mm_of_unit(whole_number_of(m_group));
        if (!mm) refuse(m_group.line, "unknown unit " + nmk_text::quoted(m_group.value));
        m_drawing.states_unit = *mm > 0.0;
        if (m_drawing.states_unit) m_mm = *mm;
    }

    void read_entities() {
        while (!m_group.is(0, "ENDSEC")) {
            if (m_group.is(0, "EOF")) refuse(m_group.line, "EOF inside a section; expected ENDSEC");
            if (m_group.code != 0) refuse(m_group.line, expected("group 0 with an entity"));
            add(read_entity());
        }
    }

    DxfEntity read_entity() {
        DxfEntity entity{m_group.value, m_group.line};
        for (advance(); m_group.code != 0; advance()) entity.groups.push_back(m_group);
        return entity;
    }

    /// The VERTEX entities of a polyline; its SEQEND is read too.
    std::vector<DxfEntity> read_vertices() {
        std::vector<DxfEntity> vertices;
        while (m_group.is(0, "VERTEX")) vertices.push_back(read_entity());
        if (m_group.is(0, "SEQEND")) {
            read_entity();
        } else {
            refuse(m_group.line, expected("VERTEX or SEQEND, since a POLYLINE is not complete"));
        }
        return vertices;
    }

    void add(const DxfEntity& entity) {
        const bool is_polyline = entity.name == "POLYLINE";
        const std::vector<DxfEntity> vertices =
            is_polyline ? read_vertices() : std::vector<DxfEntity>();
        if (entity.whole_number(67, 0) == 1) {
            leave_out(entity, {"of the paper"});
            return;
        }
        const auto* const reader =
            std::find_if(std::begin(shape_readers), std::end(shape_readers),
                         [&](const ShapeReader& each) { return each.name == entity.name; });
        if (is_polyline) {
            keep(entity, polyline_of(entity, vertices, m_mm));
        } else if (reader != std::end(shape_readers)) {
            keep(entity, reader->read(entity, m_mm));
        } else {
            leave_out(entity, {""});
        }
    }

    void keep(const DxfEntity& entity, const Shape& shape) {
        if (const auto* const none = std::get_if<NoCurve>(&shape)) {
            leave_out(entity, *none);
            return;
        }
        const ngkCurvePtr3& curve = std::get<ngkCurvePtr3>(shape);
        if (!curve->is_valid())
            refuse(entity.line, std::string(entity.name) + " cannot be used as a curve");
        if (m_drawing.curves.size() == max_curves) {
            refuse(entity.line, "more than " + std::to_string(max_curves) + " curves");
        }
        m_drawing.curves.push_back({curve, std::string(entity.name), entity.line});
    }

    void leave_out(const DxfEntity& entity, const NoCurve& why) {
        const std::string reason = why.reason;
        ++m_drawing.left_out[std::string(entity.name) + (reason.empty() ? "" : " " + reason)];
    }

    DxfGroups m_groups;
    DxfGroup m_group;
    double m_mm;
    DxfDrawing m_drawing;
};

}  // namespace

nmk_text::Result<DxfDrawing> read_dxf(const std::string& file_name, std::string_view text,
                                      double mm_of_unstated) {
    return nmk_text::value_or_error(file_name,
                                    [&] { return DrawingReader(text, mm_of_unstated).read(); });
}

bool is_binary_dxf(std::string_view bytes) {
    // The sentinel of the format: its first line ends so, behind the name of a program.
    constexpr std::string_view end_of_sentinel = "Binary DXF\r\n\x1a";
    constexpr std::size_t longest_sentinel = 64;
    return bytes.substr(0, longest_sentinel).find(end_of_sentinel) != bytes.npos;
}

bool looks_like_dxf(std::string_view text) {
    nmk_text::TextLines lines(text);
    nmk_text::TextLine line;
    if (!lines.next(line)) return false;
    const std::string_view code = nmk_text::trimmed(line.text);
    return !code.empty() && code.find_first_not_of("0123456789") == code.npos;
}

}  // namespace nmk_dxf
