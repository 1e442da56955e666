// nmkStackTimer_benchmark: the events of a million sections, beside a bare loop.
//
// The peer reads the same clock and appends a record of the same size to a std::vector, twice for
// each section. Both start without storage in each round.

#include <apsl/apHighResTime.h>
#include <nmktoolbox/runtime/nmkStackTimer.h>
#include <nmktoolbox/runtime/nmkStackTimerSection.h>

#include <vector>

#include "stopwatch.h"

namespace {

constexpr int sections = 1000000;
constexpr int rounds = 7;
constexpr double target = 1.5;

int record_sections() {
    nmkStackTimer::reset_all();
    for (int i = 0; i < sections; ++i) const nmkStackTimerSection section("section");
    return sections;
}

int append_records() {
    std::vector<nmkStackTimerEvent> events;
    for (int i = 0; i < sections; ++i) {
        events.push_back({"section", apHighResTime::time()});
        events.push_back({nullptr, apHighResTime::time()});
    }
    return static_cast<int>(events.size()) / 2;
}

}  // namespace

int main() {
    nmkStackTimer::enable();
    const auto taken = stopwatch::in_turns(rounds, record_sections, append_records);
    return stopwatch::report("nmkStackTimer_1e6_sections", taken.ours, taken.peer, target,
                             taken.same)
               ? 0
               : 1;
}
