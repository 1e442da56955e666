#include <nmktoolbox/search/nmk2dSearchNode.h>
#include <nmktoolbox/search/nmk2dSearchNodeGenerator.h>

#include <cstddef>
#include <typeinfo>
#include <vector>

#include "search/lattice_steps.h"
#include "search/local_filler.h"

namespace {

// How many values of a coordinate the generators in this file make.
constexpr std::size_t values_per_axis = 3;

void add_both_ways(double value, double step, coiFiller<double>& filler) {
    filler.add(value);
    filler.add(value + step);
    filler.add(value - step);
}

}  // namespace

void nmkAbs2dSearchNodeGenerator::expand_node(
    const nmkSearchNode& node, coiFiller<std::shared_ptr<const nmkSearchNode>> filler) const {
    const auto& from = static_cast<const nmk2dSearchNode&>(node);
    std::vector<double> x_values;
    std::vector<double> y_values;
    x_values.reserve(values_per_axis);
    y_values.reserve(values_per_axis);
    create_x_values(from, nmk_search::LocalFiller(x_values).filler());
    create_y_values(from, nmk_search::LocalFiller(y_values).filler());
    for (const double x : x_values) {
        for (const double y : y_values) {
            // Deliberate: compared exactly, although nodes are equal within a tolerance.
            if (x == from.point().x && y == from.point().y) continue;
            filler.add(create_node(giPoint2(x, y)));
        }
    }
}

nmkAbs2dSearchNodeGenerator::~nmkAbs2dSearchNodeGenerator() = default;

nmk2dSearchNodeGenerator::nmk2dSearchNodeGenerator(double step_x, double step_y)
    : m_step_x(step_x), m_step_y(step_y) {}

nmk2dSearchNodeGenerator::~nmk2dSearchNodeGenerator() = default;

double nmk2dSearchNodeGenerator::find_x_value(double x) const { return x + m_step_x; }

std::shared_ptr<nmkSearchNode> nmk2dSearchNodeGenerator::create_node(const giPoint2& point) const {
    return std::make_shared<nmk2dSearchNode>(point);
}

void nmk2dSearchNodeGenerator::create_x_values(const nmk2dSearchNode& node,
                                               coiFiller<double> filler) const {
    add_both_ways(node.point().x, m_step_x, filler);
}

void nmk2dSearchNodeGenerator::create_y_values(const nmk2dSearchNode& node,
                                               coiFiller<double> filler) const {
    add_both_ways(node.point().y, m_step_y, filler);
}

nmkForward2dSearchNodeGenerator::~nmkForward2dSearchNodeGenerator() = default;

void nmkForward2dSearchNodeGenerator::create_x_values(const nmk2dSearchNode& node,
                                                      coiFiller<double> filler) const {
    filler.add(node.point().x + step_x());
}

std::optional<nmk_search::LatticeSteps> nmk_search::lattice_steps_of(
    const nmkSearchNodeGenerator& generator) {
    const bool is_forward = typeid(generator) == typeid(nmkForward2dSearchNodeGenerator);
    if (!is_forward && typeid(generator) != typeid(nmk2dSearchNodeGenerator)) return std::nullopt;
    const auto& of_the_plane = static_cast<const nmk2dSearchNodeGenerator&>(generator);
    return LatticeSteps{of_the_plane.m_step_x, of_the_plane.m_step_y, is_forward};
}
