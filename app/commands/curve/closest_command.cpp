// closest_command: `nmk curve closest`.

#include "commands/curve/closest_command.h"

#include <string>

#include "commands/curve/curve_files.h"
#include "commands/curve/curve_picture.h"
#include "commands/curve/facts_json.h"
#include "commands/curve/facts_text.h"
#include "commands/curve/or_throw.h"
#include "commands/curve/write_report.h"
#include "files/base_name.h"
#include "text/number_format.h"

namespace nmk_curve {

namespace {

constexpr int schema = 1;

std::string text_of(const ngkCurvePoint3& nearest) {
    return "Point           " + place_text(nearest.point) + "\nDistance, mm    " +
           length_text(nearest.distance) + "\nParameter       " +
           nmk_text::short_number(nearest.t.value, 9) + " of segment " +
           std::to_string(nearest.t.segment) + "\n";
}

std::string nearest_json(const giPoint3& given, const ngkCurvePoint3& nearest) {
    return nmk_text::json_document({{"schema", schema},
                                    {"given", json_of(given)},
                                    {"point", json_of(nearest.point)},
                                    {"distance", nearest.distance},
                                    {"segment", nearest.t.segment},
                                    {"value", nearest.t.value}});
}

std::string picture_of(const CurveOptions& options, const std::string& name,
                       const ngkCurvePtr3& curve, const ngkCurvePoint3& nearest) {
    CurveScene scene{nmk_files::base_name(name),
                     "nearest point, distance " + length_text(nearest.distance),
                     {curve},
                     {curve_facts(curve, options.tolerance)},
                     {},
                     {},
                     FoundPlace{options.points[0], nearest.point, "point and nearest point"}};
    return curve_picture(scene);
}

}  // namespace

int find_closest(const CurveOptions& options, std::ostream& out, std::ostream& err) {
    const CurveFile file = or_throw(read_curves(options.files[0], options.mm_of_unit));
    const ngkCurvePtr3 curve = or_throw(chosen_curve(file, options.curve)).curve;
    ngkCurvePoint3 nearest;
    if (!curve->closest_point(options.points[0], nearest)) {
        throw nmk_text::Error{file.name, 0, "the curve has no nearest point"};
    }
    std::vector<nmk_files::OutputFile> files;
    if (!options.svg_file.empty()) {
        files.push_back({options.svg_file, picture_of(options, file.name, curve, nearest)});
    }
    return write_report(options, files, text_of(nearest),
                        options.json ? nearest_json(options.points[0], nearest) : "", out, err);
}

}  // namespace nmk_curve
