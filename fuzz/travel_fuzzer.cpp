// travel_fuzzer: any bytes as a small travel problem. An order of a problem without a fault has to
// be allowed, and as short as the best of all orders.

#include <nmktoolbox/ordering/nmkTravelOrder.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "ordering/plain_travel.h"

namespace {

constexpr int max_items = 6;  // all orders of more would only slow the fuzzer down

// Takes the bytes one value after the other; zeros when they have run out.
class Bytes {
  public:
    Bytes(const std::uint8_t* data, std::size_t size) : m_data(data), m_size(size) {}

    int below(int limit) { return byte() % limit; }
    // Mostly small whole numbers, so that places coincide; now and then any bits at all.
    double number() {
        const int kind = below(16);
        if (kind != 0) return static_cast<double>(kind) * below(256);
        std::uint8_t bits[sizeof(double)];
        for (std::uint8_t& bit : bits) bit = byte();
        double value = 0.0;
        std::memcpy(&value, bits, sizeof value);
        return value;
    }
    giPoint3 point() {
        const double x = number();
        const double y = number();
        return {x, y, number()};
    }

  private:
    std::uint8_t byte() { return m_next < m_size ? m_data[m_next++] : std::uint8_t{0}; }

    const std::uint8_t* m_data;
    std::size_t m_size;
    std::size_t m_next = 0;
};

nmkTravelEnd end_of(Bytes& bytes) {
    switch (bytes.below(5)) {
        case 1:
            return nmkTravelEnd::at_place(bytes.point());
        case 2:
            return nmkTravelEnd::at_item(bytes.below(max_items + 2) - 1);
        case 3:
            return nmkTravelEnd::at_start();
        default:
            return {};
    }
}

nmkTravelProblem problem_of(Bytes& bytes) {
    nmkTravelProblem problem;
    problem.measure = static_cast<nmkTravelMeasure>(bytes.below(4));
    problem.start = end_of(bytes);
    problem.end = end_of(bytes);
    const int items = bytes.below(max_items + 1);
    problem.groups.resize(static_cast<std::size_t>(bytes.below(3)));
    for (nmkTravelGroup& group : problem.groups) group.keeps_order = bytes.below(2) != 0;
    for (int item = 0; item < items; ++item) {
        const auto kind = static_cast<nmkTravelItemKind>(bytes.below(4));
        const giPoint3 start = bytes.point();
        problem.items.push_back({kind, start, bytes.point()});
        const auto group = static_cast<std::size_t>(bytes.below(4));
        if (group < problem.groups.size()) problem.groups[group].items.push_back(item);
    }
    if (problem.measure == nmkTravelMeasure::time) {
        problem.speed = {bytes.number(), bytes.number(), bytes.number()};
        problem.acceleration = {bytes.number(), bytes.number(), bytes.number()};
    }
    return problem;
}

// Where squares overflow or vanish the plain length is not exact.
bool is_moderate(double length) { return length > 1e-100 && length < 1e100; }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Bytes bytes(data, size);
    const nmkTravelProblem problem = problem_of(bytes);
    const nmkTravelResult result = nmkTravelOrder(problem).find();
    if (result.stop_reason == nmkTravelStopReason::bad_problem) {
        if (result.error.empty() || !result.order.empty()) std::abort();
        return 0;
    }
    if (!plain::is_allowed(problem, result.order, result.is_reversed)) std::abort();
    const double least = plain::ShortestTravel(problem).length();
    if (is_moderate(least) && !(result.length <= least * (1.0 + 1e-9))) std::abort();
    return 0;
}
