// stopwatch: how long something takes, and the line a benchmark prints about it.
#pragma once

#include <apsl/apHighResTime.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <limits>

namespace stopwatch {

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
    for (int i = 1; i < calls; ++i) least = std::min(least, seconds(work));
    return least;
}

/// The least times of ours and of the peer, and whether their answers were always the same.
struct Taken {
    double ours = std::numeric_limits<double>::max();
    double peer = std::numeric_limits<double>::max();
    bool same = true;
};

/// Calls both in turn, so that what else the machine does troubles both alike.
template <class Ours, class Peer>
Taken in_turns(int rounds, const Ours& ours, const Peer& peer) {
    Taken taken;
    for (int round = 0; round < rounds; ++round) {
        decltype(ours()) our_answer{};
        decltype(peer()) peer_answer{};
        taken.ours = std::min(taken.ours, seconds([&] { our_answer = ours(); }));
        taken.peer = std::min(taken.peer, seconds([&] { peer_answer = peer(); }));
        taken.same = taken.same && our_answer == peer_answer;
    }
    return taken;
}

/// Prints one measurement, and answers whether it reached its target and gave the right answer.
inline bool report(const char* name, double ours, double peer, double target, bool same_answer) {
    const double ratio = ours / peer;
    const bool reached = same_answer && ratio <= target;
    std::printf("%-44s %11.6f %11.6f %9.4f  at most %.4g%s%s\n", name, ours, peer, ratio, target,
                same_answer ? "" : "  ANSWERS DIFFER", reached ? "" : "  MISSED");
    std::fflush(stdout);
    return reached;
}

/// Prints one measurement that has nothing to reach.
inline void tell(const char* name, double ours, double peer) {
    std::printf("%-44s %11.6f %11.6f %9.4f  told\n", name, ours, peer, ours / peer);
    std::fflush(stdout);
}

}  // namespace stopwatch
