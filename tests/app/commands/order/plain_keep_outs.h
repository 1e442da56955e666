// plain_keep_outs.h: keep-outs as circles and polygons with a clearance, measured by plain
// distances, and legs that are compared with them.
//
// It shares nothing with the reader of keep-outs or with the library's ways around them.
#pragma once

#include <geometry/giPoint3.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "formats/job/machining_job.h"

namespace nmk_order {

struct PlainKeepOut {
    std::vector<giPoint3> corners;  // one for a circle
    double radius = 0.0;            // of a circle
};

inline double distance_in_plane(const giPoint3& a, const giPoint3& b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

inline double turn(const giPoint3& a, const giPoint3& b, const giPoint3& c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

/// The distance of a place from a line.
inline double distance_to_line(const giPoint3& p, const giPoint3& a, const giPoint3& b) {
    const double length = distance_in_plane(a, b);
    if (length == 0.0) return distance_in_plane(p, a);
    const double along =
        ((p.x - a.x) * (b.x - a.x) + (p.y - a.y) * (b.y - a.y)) / (length * length);
    const double part = std::clamp(along, 0.0, 1.0);
    return std::hypot(a.x + part * (b.x - a.x) - p.x, a.y + part * (b.y - a.y) - p.y);
}

inline double distance_of_lines(const giPoint3& a, const giPoint3& b, const giPoint3& c,
                                const giPoint3& d) {
    const bool crosses = turn(a, b, c) * turn(a, b, d) < 0.0 && turn(c, d, a) * turn(c, d, b) < 0.0;
    return crosses ? 0.0
                   : std::min({distance_to_line(a, c, d), distance_to_line(b, c, d),
                               distance_to_line(c, a, b), distance_to_line(d, a, b)});
}

inline bool is_inside(const giPoint3& p, const std::vector<giPoint3>& corners) {
    bool inside = false;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const giPoint3& a = corners[i];
        const giPoint3& b = corners[(i + 1) % corners.size()];
        if ((a.y > p.y) != (b.y > p.y) && p.x < a.x + (b.x - a.x) * (p.y - a.y) / (b.y - a.y)) {
            inside = !inside;
        }
    }
    return inside;
}

inline double distance_to_keep_out(const PlainKeepOut& keep_out, const giPoint3& from,
                                   const giPoint3& to) {
    const std::vector<giPoint3>& corners = keep_out.corners;
    if (corners.size() == 1) {
        return std::max(distance_to_line(corners[0], from, to) - keep_out.radius, 0.0);
    }
    double least = is_inside(from, corners) || is_inside(to, corners) ? 0.0 : HUGE_VAL;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        least = std::min(
            least, distance_of_lines(from, to, corners[i], corners[(i + 1) % corners.size()]));
    }
    return least;
}

struct PlainKeepOuts {
    double clearance = 0.0;
    std::vector<PlainKeepOut> all;

    /// By how much a leg comes nearer to some keep-out than the clearance; below 0 for not at all.
    double depth_of(const giPoint3& from, const giPoint3& to) const {
        double least = HUGE_VAL;
        for (const PlainKeepOut& each : all) {
            least = std::min(least, distance_to_keep_out(each, from, to));
        }
        return clearance - least;
    }

    /// As a table, in mm.
    std::string table() const {
        std::string text = "clearance," + std::to_string(clearance) + "\n";
        for (const PlainKeepOut& each : all) {
            const bool is_circle = each.corners.size() == 1;
            text += is_circle ? "" : "polygon\n";
            for (const giPoint3& corner : each.corners) {
                text += std::string(is_circle ? "circle," : "corner,") + std::to_string(corner.x) +
                        "," + std::to_string(corner.y) +
                        (is_circle ? "," + std::to_string(each.radius) : "") + "\n";
            }
        }
        return text;
    }
};

/// Circles and rectangles between the items and away from (0, 0), each as large as it can be.
class KeepOutsBetweenItems {
  public:
    KeepOutsBetweenItems(const nmk_job::MachiningJob& job, unsigned seed)
        : m_job(job), m_random(seed) {
        for (const nmk_job::JobItem& item : job.items) {
            for (const giPoint3& p : {item.start, item.end.value_or(item.start)}) {
                m_low = {std::min(m_low.x, p.x), std::min(m_low.y, p.y), 0.0};
                m_high = {std::max(m_high.x, p.x), std::max(m_high.y, p.y), 0.0};
            }
        }
    }

    PlainKeepOuts make(std::size_t count, double clearance) {
        PlainKeepOuts keep_outs{clearance, {}};
        for (int tries = 0; tries < 4000 && keep_outs.all.size() < count; ++tries) {
            const giPoint3 place(rounded(m_low.x, m_high.x), rounded(m_low.y, m_high.y), 0.0);
            double room = std::min(room_at(place), (m_high.x - m_low.x) / 6.0);
            for (const PlainKeepOut& other : keep_outs.all) {
                room = std::min(room, distance_to_keep_out(other, place, place) - clearance);
            }
            const double size = std::floor((room - clearance - 0.05) * 100.0) / 100.0;
            if (size > 0.2) keep_outs.all.push_back(shape(place, size, tries % 2 == 0));
        }
        return keep_outs;
    }

  private:
    double rounded(double low, double high) {
        const double part = static_cast<double>(m_random() % 10001) / 10000.0;
        return std::floor((low + part * (high - low)) * 100.0) / 100.0;
    }

    double room_at(const giPoint3& place) const {
        double room = distance_in_plane(place, giPoint3(0.0, 0.0, 0.0));
        for (const nmk_job::JobItem& item : m_job.items) {
            room =
                std::min(room, distance_to_line(place, item.start, item.end.value_or(item.start)));
        }
        return room;
    }

    static PlainKeepOut shape(const giPoint3& at, double size, bool is_circle) {
        if (is_circle) return {{at}, size};
        const double half = std::floor(size * 70.0) / 100.0;  // a square within the circle
        return {{{at.x - half, at.y - half, 0.0},
                 {at.x + half, at.y - half, 0.0},
                 {at.x + half, at.y + half, 0.0},
                 {at.x - half, at.y + half, 0.0}},
                0.0};
    }

    const nmk_job::MachiningJob& m_job;
    std::mt19937 m_random;
    giPoint3 m_low{HUGE_VAL, HUGE_VAL, 0.0}, m_high{-HUGE_VAL, -HUGE_VAL, 0.0};
};

}  // namespace nmk_order
