// dxf_spline: the NURBS curve of a spline of a DXF file.

#include <ngk/ngkNurbCurve.h>

#include <string>
#include <vector>

#include "formats/dxf/dxf_shapes.h"
#include "formats/dxf/scaled_point.h"

namespace nmk_dxf {

namespace {

struct Spline {
    int degree = 0;
    std::vector<double> knots;
    std::vector<double> weights;
    std::vector<giPoint3> points;
};

/// A coordinate y or z belongs to the point whose x came last.
void set_coordinate(Spline& spline, const DxfGroup& group, double mm) {
    if (spline.points.empty()) {
        refuse(group.line, "group " + std::to_string(group.code) +
                               " before group 10; expected the x of a control point first");
    }
    giPoint3& point = spline.points.back();
    (group.code == 20 ? point.y : point.z) = number_of(group) * mm;
}

void take(Spline& spline, const DxfGroup& group, double mm) {
    switch (group.code) {
        case 10:
            spline.points.emplace_back(number_of(group) * mm, 0.0, 0.0);
            break;
        case 20:
        case 30:
            set_coordinate(spline, group, mm);
            break;
        case 40:
            spline.knots.push_back(number_of(group));
            break;
        case 41:
            spline.weights.push_back(number_of(group));
            break;
        case 71:
            spline.degree = whole_number_of(group);
            break;
        default:
            break;
    }
}

std::string counted(std::size_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

void check_counts(const Spline& spline, std::size_t line) {
    if (spline.degree < 1 || spline.degree > ngk_max_degree) {
        refuse(line, "SPLINE of degree " + std::to_string(spline.degree) +
                         "; expected one from 1 to " + std::to_string(ngk_max_degree));
    }
    const std::size_t points = spline.points.size();
    const std::size_t knots = points + static_cast<std::size_t>(spline.degree) + 1;
    if (spline.knots.size() != knots) {
        refuse(line, "SPLINE with " + counted(points, "control point") + " of degree " +
                         std::to_string(spline.degree) + " and " +
                         counted(spline.knots.size(), "knot") + "; expected " +
                         std::to_string(knots));
    }
    if (!spline.weights.empty() && spline.weights.size() != points) {
        refuse(line, "SPLINE with " + counted(points, "control point") + " and " +
                         counted(spline.weights.size(), "weight") +
                         "; expected one for each point, or none");
    }
}

}  // namespace

Shape spline_of(const DxfEntity& entity, double mm) {
    Spline spline;
    for (const DxfGroup& group : entity.groups) take(spline, group, mm);
    if (spline.points.empty()) return NoCurve{"without control points"};
    check_counts(spline, entity.line);
    const ngkCurvePtr3 curve(
        new ngkNurbCurve3(spline.degree, spline.knots, spline.points, spline.weights));
    if (!curve->is_valid()) {
        refuse(entity.line,
               "SPLINE with knots or weights that cannot be used; expected knots that do not "
               "descend, each inner one at most as often as the degree, and weights from 1e-10 to "
               "1e10");
    }
    return curve;
}

}  // namespace nmk_dxf
