// stopwatch: how long something takes, and the line a benchmark prints about it.
//
// A run is small where the environment has NMK_BENCHMARK_SMALL=1: sizes are cut down, everything is
// done once, and only the results are judged, so that the run shows in seconds that the program
// works and that both ways still give the same.
#pragma once

#include <apsl/apHighResTime.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <string_view>

namespace stopwatch {

inline bool is_small() {
    static const char* const value = std::getenv("NMK_BENCHMARK_SMALL");
    return value != nullptr && std::string_view(value) == "1";
}

/// The size or count of a full run, or that of a small one.
inline int size(int full, int small) { return is_small() ? small : full; }

/// How often something is done: in a small run once.
inline int rounds(int full) { return size(full, 1); }

/// Seconds that a call takes.
template <class Work>
double seconds(const Work& work) {
    const double begin = apHighResTime::time();
    work();
    return apHighResTime::time() - begin;
}

/// Seconds of this process's own on a processor that a call takes, whatever else the machine does.
template <class Work>
double processor_seconds(const Work& work) {
    const std::clock_t begin = std::clock();
    work();
    return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

/// The least of several calls, for work that is over too soon to be timed once.
template <class Work>
double least_seconds(int calls, const Work& work) {
    double least = seconds(work);
    for (int i = 1; i < rounds(calls); ++i) least = std::min(least, seconds(work));
    return least;
}

/// The least times of ours and of the peer, and whether their results were always the same.
struct Taken {
    double ours = std::numeric_limits<double>::max();
    double peer = std::numeric_limits<double>::max();
    bool same = true;
};

/// Calls both in turn, so that what else the machine does troubles both alike. `timer` calls what
/// it is given and returns how long that took.
template <class Timer, class Ours, class Peer>
Taken in_turns_by(const Timer& timer, int turns, const Ours& ours, const Peer& peer) {
    Taken taken;
    for (int turn = 0; turn < rounds(turns); ++turn) {
        decltype(ours()) our_result{};
        decltype(peer()) peer_result{};
        taken.ours = std::min(taken.ours, timer([&] { our_result = ours(); }));
        taken.peer = std::min(taken.peer, timer([&] { peer_result = peer(); }));
        taken.same = taken.same && our_result == peer_result;
    }
    return taken;
}

template <class Ours, class Peer>
Taken in_turns(int turns, const Ours& ours, const Peer& peer) {
    return in_turns_by([](const auto& work) { return seconds(work); }, turns, ours, peer);
}

/// The same by the time on a processor.
template <class Ours, class Peer>
Taken processor_in_turns(int turns, const Ours& ours, const Peer& peer) {
    return in_turns_by([](const auto& work) { return processor_seconds(work); }, turns, ours, peer);
}

/// Whether a measured value is within its target; in a small run it always is.
inline bool within(double value, double target) { return is_small() || value <= target; }

/// Prints one measurement, and returns whether it reached its target and both results were the
/// same.
inline bool report(const char* name, double ours, double peer, double target, bool same_result) {
    const double ratio = ours / peer;
    const bool reached = same_result && within(ratio, target);
    std::printf("%-44s %11.6f %11.6f %9.4f  at most %.4g%s%s\n", name, ours, peer, ratio, target,
                same_result ? "" : "  RESULTS DIFFER", reached ? "" : "  MISSED");
    std::fflush(stdout);
    return reached;
}

/// Prints one measurement without a target.
inline void print(const char* name, double ours, double peer) {
    std::printf("%-44s %11.6f %11.6f %9.4f  no target\n", name, ours, peer, ours / peer);
    std::fflush(stdout);
}

}  // namespace stopwatch
