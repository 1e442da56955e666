#include "search/lattice_search.h"

#include <nmktoolbox/search/nmk2dSearchGoal.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <optional>
#include <span>
#include <typeinfo>
#include <utility>

#include "search/root_parent.h"

namespace nmk_search {

namespace {

using Way = LatticeOpenList::Way;

bool is_of(const nmkSearchGoal& goal, const std::type_info& type) { return typeid(goal) == type; }

bool is_goal_at_rest(const nmkSearchGoal& goal) {
    return is_of(goal, typeid(nmk2dSearchGoalPoint)) || is_of(goal, typeid(nmk2dSearchGoalXLine)) ||
           is_of(goal, typeid(nmk2dSearchGoalXLineWithGrad));
}

/// A column or row.
struct Line {
    std::int32_t number;
    double coordinate;
};

/// The columns or rows that the neighbours of a place stand in, and its own.
struct Lines {
    const Line* begin() const { return lines.data(); }
    const Line* end() const { return lines.data() + count; }

    // Answers whether all of them are lines of the lattice.
    bool fill(const LatticeAxis& axis, std::span<const int> directions, Line from) {
        for (const int direction : directions) {
            const Line line{from.number + direction, axis.next(from.coordinate, direction)};
            if (!axis.has_on_line(line.number, line.coordinate)) return false;
            lines[count++] = line;
        }
        return true;
    }

    std::array<Line, 3> lines;
    std::size_t count = 0;
};

bool is_closed_by(nmkSearchNodeVerifierResult verdict) {
    return verdict == nmkSearchNodeVerifierResult::accepted ||
           verdict == nmkSearchNodeVerifierResult::refused_for_good;
}

}  // namespace

LatticeSearch::LatticeSearch(const LatticeSteps& steps, const nmk2dSearchNode& start)
    : m_steps(steps), m_columns(start.point().x, steps.x), m_rows(start.point().y, steps.y) {}

std::unique_ptr<LatticeSearch> LatticeSearch::make(
    std::shared_ptr<const nmkSearchNodeGenerator> generator,
    std::shared_ptr<const nmkSearchNodeVerifier> verifier, const Node& start,
    std::shared_ptr<nmkSearchGoal> goal) {
    const bool goal_moves = is_of(*goal, typeid(nmk2dSearchGoalMovingXLine));
    const std::optional<LatticeSteps> steps = lattice_steps_of(*generator);
    if (!steps || !is_plain_plane_node(*start) || !(goal_moves || is_goal_at_rest(*goal)))
        return nullptr;
    const auto& root = static_cast<const nmk2dSearchNode&>(*start);
    std::unique_ptr<LatticeSearch> search(new LatticeSearch(*steps, root));
    if (!search->m_columns.is_usable() || !search->m_rows.is_usable()) return nullptr;
    search->m_generator = std::move(generator);
    search->m_verifier = std::move(verifier);
    search->m_root = start;
    search->m_goal = std::move(goal);
    search->m_goal_moves = goal_moves;
    const Way way{root.point(), 0.0, none};
    search->m_open.push({0, 0}, way, search->f_of(way));
    return search;
}

LatticeSearch::Stop LatticeSearch::run() {
    while (!m_open.is_empty()) {
        if (m_scores_do_not_compare) return {Why::left_lattice, none};
        const LatticeOpenList::Slot slot = m_open.first();
        const LatticeCell place = m_open.place(slot);
        m_open.drop_first();
        if (m_goal_moves) move_goal(m_open.way(slot).point);
        if (m_closed_cells.contains(place)) continue;
        const Way way = m_open.way(slot);
        if (!close(place, way)) continue;
        const auto number = static_cast<Number>(m_closed.size() - 1);
        if (m_goal->contains(*m_closed.back().node)) return {Why::arrived, number};
        if (!expand(place, way, number)) return {Why::left_lattice, number};
    }
    return {Why::exhausted, none};
}

void LatticeSearch::add_route(Number arrival, coiFiller<Node>& filler) const {
    std::vector<Node> route;
    for (Number at = arrival; at != none; at = m_closed[at].parent) {
        route.push_back(m_closed[at].node);
    }
    // The filler may give the search another start, and then this one is gone.
    for (auto node = route.rbegin(); node != route.rend(); ++node) filler.add(*node);
}

std::vector<Way> LatticeSearch::open_ways() const {
    std::vector<Way> ways;
    for (const LatticeOpenList::Slot slot : m_open.slots_by_age()) {
        ways.push_back(m_open.way(slot));
    }
    return ways;
}

double LatticeSearch::f_of(const Way& way) {
    const double f = m_goal->min_cost(nmk2dSearchNode(way.point)) + way.g;
    if (!std::isnan(f)) return f;
    m_scores_do_not_compare = true;
    return 0.0;
}

LatticeSearch::Node LatticeSearch::node_of(const Way& way) const {
    if (way.parent == none) return m_root;
    return std::make_shared<nmk2dSearchNode>(way.point);
}

nmkSearchNodeVerifierResult LatticeSearch::verify(Number parent, const nmkSearchNode& node) const {
    return m_verifier->verify(parent == none ? RootParent::instance() : *m_closed[parent].node,
                              node);
}

// Answers whether the place was accepted.
bool LatticeSearch::close(LatticeCell place, const Way& way) {
    Node node = node_of(way);
    const nmkSearchNodeVerifierResult verdict = verify(way.parent, *node);
    if (!is_closed_by(verdict)) return false;
    m_closed_cells.add(place);
    m_closed.push_back({std::move(node), way.parent});
    return verdict == nmkSearchNodeVerifierResult::accepted;
}

// Deliberate: the record that was popped before stays chosen.
void LatticeSearch::move_goal(const giPoint2& point) {
    if (!m_goal->overshoot_goal(nmk2dSearchNode(point), *m_generator)) return;
    m_open.score([this](const Way& way) { return f_of(way); });
}

// Answers false, and opens nothing, where a neighbour would leave the lattice.
bool LatticeSearch::expand(LatticeCell place, const Way& from, Number number) {
    Lines columns;
    Lines rows;
    if (!columns.fill(m_columns, m_steps.columns(), {place.column, from.point.x})) return false;
    if (!rows.fill(m_rows, m_steps.rows(), {place.row, from.point.y})) return false;
    keep_ages_for(columns.count * rows.count);
    for (const Line& column : columns) {
        for (const Line& row : rows) {
            const LatticeCell to{column.number, row.number};
            if (m_closed_cells.contains(to)) continue;  // the place itself is
            const giPoint2 point(column.coordinate, row.coordinate);
            const Way way{point, point.distance(from.point) + from.g, number};
            m_open.push(to, way, f_of(way));
        }
    }
    return true;
}

void LatticeSearch::keep_ages_for(std::size_t records) {
    if (m_open.ages_left() >= records) return;
    m_open.score_with_new_ages([this](const Way& way) { return f_of(way); });
}

}  // namespace nmk_search
