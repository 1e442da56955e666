// curve_options: the command line of `nmk curve`.

#include "commands/curve/curve_options.h"

#include <span>
#include <string_view>

#include "commands/curve/curve_rules.h"
#include "text/number_reader.h"

namespace nmk_curve {

namespace {

using nmk_shell::Problem;
using nmk_shell::Setter;

constexpr nmk_shell::Choice<Action> actions[] = {
    {"arc", Action::arc,
     "START MIDDLE END; or START END with --start-tangent, and --centre or --end-tangent; or START "
     "with --centre, --start-tangent and --sweep; or --centre, --radius, --from-angle, --to-angle"},
    {"circle", Action::circle, "three points; or CENTRE with --radius"},
    {"line", Action::line, "START END"},
    {"half-line", Action::half_line, "POINT with --direction"},
    {"infinite-line", Action::infinite_line, "POINT with --direction"},
    {"point", Action::point, "POINT: a curve that stays there"},
    {"polyline", Action::polyline, "two points or more"},
    {"rectangle", Action::rectangle, "CORNER with --size"},
    {"filleted-rectangle", Action::filleted_rectangle, "CORNER with --size and --radius"},
    {"bezier", Action::bezier, "START END with tangents; or 3 to 26 control points"},
    {"info", Action::info, "FILE: print the curves of a file"},
    {"compare", Action::compare, "FILE FILE: whether two curves are the same, and where not"},
    {"closest", Action::closest, "FILE X,Y,Z: the point of the curve that is nearest to this one"},
    {"split", Action::split, "FILE: print the pieces that a curve is made of"}};

constexpr nmk_shell::Choice<nmkNGKBezierMagnitudeMethod> magnitudes[] = {
    {"arc", nmkNGKBezierMagnitudeArc, "as along a circular arc"},
    {"chord", nmkNGKBezierMagnitudeChord, "by the chord"}};

constexpr nmk_shell::Choice<double> units[] = {{"mm", 1.0}, {"inch", 25.4}};

constexpr double largest = nmk_text::max_coordinate;
constexpr nmk_shell::NumberRange lengths = {0.0, false, largest, "a number above 0, up to 1e9"};
constexpr nmk_shell::NumberRange sizes = {0.0, true, largest, "a number from 0 to 1e9"};
constexpr nmk_shell::NumberRange angles = {-36000.0, true, 36000.0,
                                           "an angle in degrees, from -36000 to 36000"};

Setter point_setter(giPoint3& target) {
    return [&target](const std::string& text) -> Problem {
        const std::optional<giPoint3> point = point_of_text(text);
        if (!point) return "expected X,Y or X,Y,Z, numbers from -1e9 to 1e9";
        target = *point;
        return {};
    };
}

Setter direction_setter(giUnitVec3& target) {
    return [&target](const std::string& text) -> Problem {
        const std::optional<giPoint3> point = point_of_text(text);
        const giUnitVec3 direction =
            point ? giUnitVec3::direction_of(giVector3(point->x, point->y, point->z))
                  : giUnitVec3();
        if (!direction.is_set()) return "expected X,Y or X,Y,Z, not all of them 0";
        target = direction;
        return {};
    };
}

Setter size_setter(std::optional<giPoint2>& target) {
    return [&target](const std::string& text) -> Problem {
        const std::vector<double> sides = nmk_text::read_coordinates(text);
        if (sides.size() != 2) return "expected WIDTH,HEIGHT, two numbers from -1e9 to 1e9";
        target = giPoint2(sides[0], sides[1]);
        return {};
    };
}

void declare_shapes(nmk_shell::OptionTable& table, ShapeOptions& shape) {
    table.group("Shapes");
    table.option("--centre", "X,Y,Z", point_setter(shape.centre), "centre of an arc");
    table.number("--radius", "MM", shape.radius, sizes,
                 "radius of a circle, an arc or the corners of a rectangle");
    table.option("--start-tangent", "X,Y,Z", direction_setter(shape.start_tangent),
                 "direction in which an arc or a Bezier curve leaves its start");
    table.option("--end-tangent", "X,Y,Z", direction_setter(shape.end_tangent),
                 "direction in which it arrives at its end");
    table.number("--sweep", "DEGREES", shape.sweep, angles, "how far an arc turns");
    table.number("--minimum-angle", "DEGREES", shape.minimum_angle, angles,
                 "with --sweep: less makes no arc, and a turn that lacks less is full");
    table.number("--from-angle", "DEGREES", shape.from_angle, angles,
                 "angle at which an arc about a centre begins");
    table.number("--to-angle", "DEGREES", shape.to_angle, angles, "angle at which it ends");
    table.option("--normal", "X,Y,Z", direction_setter(shape.normal),
                 "normal of the plane of a circle, arc or rectangle; without it Z");
    table.option(
        "--reference", "X,Y,Z", direction_setter(shape.reference),
        "Y axis of the plane of a circle or rectangle, as far as the normal allows; without it Y");
    table.option("--direction", "X,Y,Z", direction_setter(shape.direction),
                 "direction of a half line or an infinite line");
    table.option("--size", "WIDTH,HEIGHT", size_setter(shape.size), "sides of a rectangle");
    table.choice("--magnitudes", "NAME", shape.magnitudes, std::span(magnitudes),
                 "how the lengths of the tangents of a Bezier curve are chosen");
    table.number("--start-magnitude", "MM", shape.start_magnitude, sizes,
                 "length of the derivative at the start of a Bezier curve");
    table.number("--end-magnitude", "MM", shape.end_magnitude, sizes, "the same at its end");
}

void declare_files(nmk_shell::OptionTable& table, CurveOptions& options) {
    table.group("Files");
    table.choice("--units", "NAME", options.mm_of_unit, std::span(units),
                 "unit of a CSV or DXF file that does not state it; without it mm");
    table.number("--curve", "N", options.curve,
                 nmk_shell::whole_number(1, 2'000'000'000, "a number from 1 up"),
                 "the curve of a file that has several, counted as info does");
    table.number("--piece", "N", options.piece,
                 nmk_shell::whole_number(2, 2'000'000'000, "a whole number from 2 up"),
                 "split a polyline into pieces of so many points");
}

void declare_outputs(nmk_shell::OptionTable& table, CurveOptions& options) {
    table.group("Output");
    table.number("--tolerance", "MM", options.tolerance, lengths,
                 "how far points may be apart that are the same, and a polygon from its curve");
    table.number("--points", "N", options.sample_count,
                 nmk_shell::whole_number(2, max_points, "a whole number from 2 to 1000000"),
                 "so many points of the curve at equal lengths along its polygon");
    table.output_file(
        "-o,--output", options.output_file,
        "write the curve (.ngk), its points (.csv) or all that is known of it (.json)");
    table.output_file("--svg", options.svg_file,
                      "draw the curves with their ends, tangents, control points and centres");
    table.option("--csv", options.csv, "print the points as CSV instead of the text");
    table.option("--json", options.json, "print JSON instead of the text");
    table.option("--quiet", options.quiet, "print no text; CSV and JSON are still printed");
}

}  // namespace

std::string action_name(Action action) {
    return nmk_shell::name_of_choice<Action, Action>(action, std::span(actions));
}

void declare_curve_options(nmk_shell::OptionTable& table, CurveOptions& options) {
    table.describe(
        "Makes curves from points and tangents, and examines those of files: DXF drawings (lines, "
        "circles, arcs, polylines and splines), CSV tables of points, which are one polyline, and "
        "archives (.ngk), which keep one curve of any kind. "
        "Points are X,Y or X,Y,Z in millimetres.");
    table
        .positional_choice("ACTION", options.action, std::span(actions),
                           "the shape to make, or what to do with a file")
        .is_required = true;
    nmk_shell::Argument& words = table.positional(
        "POINT|FILE",
        [&options](const std::string& text) {
            options.words.push_back(text);
            return Problem();
        },
        "the points of a shape, or the files; - is standard input");
    words.is_many = true;
    words.completes = nmk_shell::Completes::files;
    declare_shapes(table, options.shape);
    declare_files(table, options);
    declare_outputs(table, options);
    table.check([&options] { return check_curve_options(options); });
    table.exit_code(1, "compare: the curves are different");
    table.example("nmk curve arc 0,0 30,30 60,0 --svg arc.svg");
    table.example("nmk curve filleted-rectangle 0,0 --size 60,40 --radius 8 --points 12 --csv");
    table.example("nmk curve info samples/bracket.dxf");
    table.example("nmk curve closest samples/bracket.dxf 20,90 --curve 1");
}

}  // namespace nmk_curve
