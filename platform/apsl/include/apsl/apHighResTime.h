// apHighResTime.h: time for measuring how long something takes.
#pragma once

/// The clock of the process: monotonic, so that a change of the wall clock never shows.
struct apHighResTime {
    /// Seconds since some fixed moment, with at least microsecond steps.
    static double time();
};
