// nmkTravelProblem: what nmkTravelOrder puts in order, and what comes out.
//
// Items are points, lines that may be cut from either end, and lines that may not. The cutter
// travels from the exit of each item to the entry of the next; that travel, with the legs from the
// start and to the end, is what is made short. What is cut is not counted.
//
// Coordinates are in any one unit of length, speeds in that unit a second and accelerations in that
// unit a second squared. Items are numbered from 0 in the order of `items`.
#pragma once

#include <geometry/giPoint3.h>
#include <nmktoolbox/export.h>
#include <nmktoolbox/ordering/nmkTravelKeepOut.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

enum class nmkTravelItemKind {
    point,
    line,         // may be cut from either end
    one_way_line  // is cut from its start to its end
};

struct nmkTravelItem {
    nmkTravelItemKind kind = nmkTravelItemKind::point;
    giPoint3 start;
    giPoint3 end;  // of a line; ignored for a point

    static nmkTravelItem point(const giPoint3& at) { return {nmkTravelItemKind::point, at, at}; }
    static nmkTravelItem line(const giPoint3& start, const giPoint3& end) {
        return {nmkTravelItemKind::line, start, end};
    }
    static nmkTravelItem one_way_line(const giPoint3& start, const giPoint3& end) {
        return {nmkTravelItemKind::one_way_line, start, end};
    }
};

/// Where the travel starts, or where it ends.
struct nmkTravelEnd {
    enum class Kind {
        free,     // wherever it is shortest; no leg
        place,    // at a place that is not an item; the leg to or from it counts
        item,     // with an item
        at_start  // of an end only: back to the start place, or to the first item
    };

    Kind kind = Kind::free;
    giPoint3 place;
    int item = -1;

    static nmkTravelEnd at_place(const giPoint3& place) { return {Kind::place, place, -1}; }
    static nmkTravelEnd at_item(int item) { return {Kind::item, giPoint3(), item}; }
    static nmkTravelEnd at_start() { return {Kind::at_start, giPoint3(), -1}; }
};

enum class nmkTravelMeasure {
    length,     // Euclidean
    chebyshev,  // the longest of the three differences
    time        // of a rapid move: each axis accelerates, travels and brakes; the slowest decides
};

/// A value for each axis.
struct nmkTravelAxes {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

/// Items that follow each other without another item between them.
struct nmkTravelGroup {
    std::vector<int> items;
    bool keeps_order = false;  // they are travelled in the order of `items`
};

struct nmkTravelProblem {
    std::vector<nmkTravelItem> items;
    nmkTravelEnd start;
    nmkTravelEnd end;
    std::vector<nmkTravelGroup> groups;  // an item may be in one of them
    nmkTravelMeasure measure = nmkTravelMeasure::length;
    nmkTravelAxes speed;         // for nmkTravelMeasure::time; above 0 on every axis
    nmkTravelAxes acceleration;  // likewise
    // No leg crosses one: it goes the shortest way around, see nmkTravelWays. All places, those of
    // items and ends, are outside. What is cut between the ends of a line is not looked at.
    std::vector<nmkTravelKeepOut> keep_outs;
};

enum class nmkTravelStopReason {
    finished,
    stopped,     // by the reporter; the order is the best so far
    time_limit,  // likewise
    bad_problem  // nothing is ordered; see nmkTravelResult::error
};

struct nmkTravelResult {
    nmkTravelStopReason stop_reason = nmkTravelStopReason::finished;
    std::string error;              // the faulty part of the problem, and what was expected
    std::vector<int> order;         // the items as they are travelled; empty for a bad problem
    std::vector<bool> is_reversed;  // by item: the line is cut from its end to its start
    double length = 0.0;            // of the travel, or its time; with bends and both end legs
    double lower_bound = 0.0;       // no order is shorter, but for rounding
    bool is_shortest = false;       // proven: no order is shorter
    std::int64_t steps = 0;         // that were made
};
