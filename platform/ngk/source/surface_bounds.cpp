#include "surface_bounds.h"

#include <limits>

namespace nmk_ngk {

namespace {

// The control points along one direction that have a share in a range.
struct Window {
    const ngkKnots& along;
    std::size_t first;
    std::size_t last;

    Window(const ngkKnots& knots, const ngkRange& range)
        : along(knots),
          first(interval_at(knots.degree, knots.knots, range.low) -
                static_cast<std::size_t>(knots.degree)),
          last(interval_at(knots.degree, knots.knots, range.high)) {}

    std::size_t count() const noexcept { return last - first + 1; }
};

/// Whether a knot strictly within the range is there `degree` times: first derivatives jump there.
bool has_crease(const ngkKnots& along, const ngkRange& range) {
    const std::size_t p = static_cast<std::size_t>(along.degree);
    const auto& knots = along.knots;
    auto knot = std::ranges::upper_bound(knots, range.low);
    for (; knot != knots.end() && *knot < range.high; ++knot) {
        const std::size_t left = static_cast<std::size_t>(knots.end() - knot);
        if (left >= p && knot[static_cast<std::ptrdiff_t>(p) - 1] == *knot) return true;
    }
    return false;
}

/// A net of vectors, or of numbers as vectors along x, that is differentiated in place.
class Net {
  public:
    Net(const Window& u, const Window& v)
        : m_u(u), m_v(v), m_rows(u.count()), m_columns(v.count()) {
        m_values.resize(m_rows * m_columns);
    }

    Vec<3>& at(std::size_t i, std::size_t j) noexcept { return m_values[i * m_v.count() + j]; }

    /// The control points of the derivative; the degree falls by one. Knots that are repeated too
    /// often leave points without a share, which become zero.
    Net along_u() const {
        Net net = *this;
        net.m_rows = m_rows > 0 ? m_rows - 1 : 0;
        net.m_u_order = m_u_order + 1;
        for (std::size_t i = 0; i < net.m_rows; ++i) {
            const double factor = factor_of(m_u, i, net.m_u_order);
            for (std::size_t j = 0; j < m_columns; ++j)
                net.at(i, j) = (net.at(i + 1, j) - net.at(i, j)) * factor;
        }
        return net;
    }
    Net along_v() const {
        Net net = *this;
        net.m_columns = m_columns > 0 ? m_columns - 1 : 0;
        net.m_v_order = m_v_order + 1;
        for (std::size_t j = 0; j < net.m_columns; ++j) {
            const double factor = factor_of(m_v, j, net.m_v_order);
            for (std::size_t i = 0; i < m_rows; ++i)
                net.at(i, j) = (net.at(i, j + 1) - net.at(i, j)) * factor;
        }
        return net;
    }

    /// The length of the longest vector.
    double longest() {
        double most = 0.0;
        for (std::size_t i = 0; i < m_rows; ++i) {
            for (std::size_t j = 0; j < m_columns; ++j) most = std::max(most, at(i, j).norm());
        }
        return most;
    }

  private:
    /// What the difference of the points i and i + 1 of the window is multiplied with in the
    /// derivative of this order.
    static double factor_of(const Window& window, std::size_t i, int order) {
        const int degree = window.along.degree - order + 1;
        if (degree < 1) return 0.0;
        const std::size_t at = window.first + i + static_cast<std::size_t>(order);
        const double width =
            window.along.knots[at + static_cast<std::size_t>(degree)] - window.along.knots[at];
        return width > 0.0 ? degree / width : 0.0;
    }

    Window m_u;
    Window m_v;
    std::size_t m_rows;
    std::size_t m_columns;
    int m_u_order = 0;
    int m_v_order = 0;
    std::vector<Vec<3>> m_values;
};

/// The lengths of a net and of its derivatives.
struct NetBounds {
    double value;
    double u, v;
    double uu, uv, vv;

    explicit NetBounds(Net net) : value(net.longest()) {
        Net along_u = net.along_u();
        Net along_v = net.along_v();
        u = along_u.longest();
        v = along_v.longest();
        uu = along_u.along_u().longest();
        uv = along_u.along_v().longest();
        vv = along_v.along_v().longest();
    }
};

/// With S = A / w seen from a point nearby: S_u = (A_u - S w_u) / w, and so on for the others.
SurfaceBounds quotient(const NetBounds& a, const NetBounds& w, double size, double least_w) {
    SurfaceBounds s{};
    s.u = (a.u + size * w.u) / least_w;
    s.v = (a.v + size * w.v) / least_w;
    s.uu = (a.uu + 2.0 * s.u * w.u + size * w.uu) / least_w;
    s.uv = (a.uv + s.u * w.v + s.v * w.u + size * w.uv) / least_w;
    s.vv = (a.vv + 2.0 * s.v * w.v + size * w.vv) / least_w;
    return s;
}

}  // namespace

SurfaceBounds ControlNet::bounds_over(const ngkRange& u, const ngkRange& v) const {
    const Window along_u(m_u, u);
    const Window along_v(m_v, v);
    Net points(along_u, along_v);
    Net weights(along_u, along_v);
    const std::size_t row_length = static_cast<std::size_t>(m_v.point_count());
    const Vec<3> centre = m_points[along_u.first * row_length + along_v.first];
    double size = 0.0;
    double least_weight_here = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < along_u.count(); ++i) {
        for (std::size_t j = 0; j < along_v.count(); ++j) {
            const std::size_t index = (along_u.first + i) * row_length + along_v.first + j;
            const double weight = m_weights.empty() ? 1.0 : m_weights[index];
            const Vec<3> relative = m_points[index] - centre;
            points.at(i, j) = relative * weight;
            weights.at(i, j) = Vec<3>{{weight, 0.0, 0.0}};
            size = std::max(size, relative.norm());
            least_weight_here = std::min(least_weight_here, weight);
        }
    }
    SurfaceBounds bounds = quotient(NetBounds(points), NetBounds(weights), size, least_weight_here);
    if (has_crease(m_u, u) || has_crease(m_v, v))
        bounds.uu = bounds.uv = bounds.vv = std::numeric_limits<double>::infinity();
    return bounds;
}

}  // namespace nmk_ngk
