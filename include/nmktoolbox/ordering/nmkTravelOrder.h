// nmkTravelOrder: an order of machining items with near-optimal travel.
//
// A design of this library's own, beside the sorters of nmkPointSorter, which stay as they are:
//
//     nmkTravelProblem problem;
//     for (const giPoint3& hole : holes) problem.items.push_back(nmkTravelItem::point(hole));
//     const nmkTravelResult result = nmkTravelOrder(problem).find();
//
// Up to 12 items the result is the shortest order there is, by dynamic programming over subsets
// (Held and Karp, "A dynamic programming approach to sequencing problems", J. SIAM 10, 1962) with
// both directions of lines. Above, it starts from a space-filling curve and improves by chained
// Lin-Kernighan with neighbour lists, don't-look bits and local kicks that are undone from a log
// (Johnson and McGeoch, "The traveling salesman problem: a case study in local optimization", 1997;
// Applegate, Cook and Rohe, "Chained Lin-Kernighan for large traveling salesman problems", INFORMS
// J. Computing 15, 2003). Lines are pairs of points whose edge is never broken, and no exchange
// turns a one-way line. Ends of one-way lines get the prices of an assignment (Bertsekas, "The
// auction algorithm", Annals of Operations Research 14, 1988), which show where an order wastes
// something. Many items are improved cell by cell of the plane, with what is outside a
// cell as edges that are never broken.
//
// With keep-outs the order is made for the lengths of the ways around them (nmkTravelWays); legs
// that come near none cost what they cost without.
//
// Only sums, differences, products, quotients and square roots decide, and the effort is a count of
// steps: the result is the same on every machine. A time limit is the one thing that makes it
// depend on the machine. No thread is started, nothing is shared between objects.
#pragma once

#include <nmkprogressbreak/nmkProgressBreak.h>
#include <nmktoolbox/ordering/nmkSortList.h>
#include <nmktoolbox/ordering/nmkTravelProblem.h>

#include <cstdint>
#include <optional>

class NMKTOOLBOX_EXPORT nmkTravelOrder {
  public:
    /// The number of items up to which the result is the shortest order.
    static constexpr int max_exact_items = 12;

    explicit nmkTravelOrder(nmkTravelProblem problem);

    /// The effort. A step is one kick and its repair; at 0 the start is only improved as far as
    /// exchanges without kicks lead. Negative counts are taken as 0. Without a call it is
    /// default_steps of the items.
    void set_steps(std::int64_t steps) { m_steps = steps < 0 ? 0 : steps; }

    /// Ends the search after `seconds` with the best order so far, which then depends on the
    /// machine. Reading, starting and returning are not cut short. Beside keep-outs the check for
    /// places that they enclose is: the length is infinite where one has not been found. Negative
    /// or not a number: at once.
    void set_time_limit(double seconds) { m_seconds = seconds; }

    /// `reporter` is borrowed, null for none; where one of its operations returns non-zero the
    /// search ends with the best order so far. The exact search is not interrupted.
    void set_progress(nmkProgressBreak* reporter) { m_progress = reporter; }

    /// A short order. May be called again, with the same result.
    ///
    /// A coordinate that is not finite or unset, an end that does not exist, a group that overlaps
    /// another or cannot stay together, and a speed or acceleration that is not above 0 are bad
    /// problems; so are, beside keep-outs, coordinates above nmkTravelWays::max_coordinate, a
    /// keep-out that is not made of simple polygons, and a place inside one or enclosed by several.
    /// A length too large for a double is infinite. Without items the order is empty, and the
    /// length that of the leg from a start place to an end place.
    nmkTravelResult find() const;

    /// Orders a list: its items are put into the order that is found, and those nmkSortItemLines
    /// that are better travelled the other way are reversed. Of a bad problem the list stays as it
    /// is.
    ///
    ///   items     points, and lines where an item has an end point that is set; they are numbered
    ///             from 0 in the order of the list, and a reversed line is taken as it is travelled
    ///   is_one_way  lines are travelled as they are
    ///   settings  ends, groups and measure; its items are ignored
    ///   returns   what find returns; is_reversed is relative to the list as it was
    static nmkTravelResult sort(nmkSortList& items, bool is_one_way = false,
                                nmkTravelProblem settings = {},
                                nmkProgressBreak* progress = nullptr,
                                std::optional<std::int64_t> steps = std::nullopt);

    /// The effort where set_steps was not called: at least 500 steps, 10 for each of the first
    /// 20,000 items and 6 for each further one. A line gets a tenth of a point's.
    ///
    ///   items  number of items
    ///   lines  how many of them are lines
    static std::int64_t default_steps(std::int64_t items, std::int64_t lines = 0);

  private:
    nmkTravelProblem m_problem;
    std::optional<std::int64_t> m_steps;
    std::optional<double> m_seconds;
    nmkProgressBreak* m_progress = nullptr;
};
