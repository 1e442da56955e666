// percent_recorder.h: a percent function that keeps what it was called with.
#pragma once

#include <stlfile/TriangleFile.h>

#include <vector>

struct PercentRecorder {
    explicit PercentRecorder(TriangleFile& file, std::size_t stop_at_call = 0)
        : stop_at(stop_at_call) {
        file.set_percent_func(show, this);
    }
    PercentRecorder(const PercentRecorder&) = delete;
    PercentRecorder& operator=(const PercentRecorder&) = delete;

    static int show(int percent, void* data) {
        auto* const self = static_cast<PercentRecorder*>(data);
        self->percents.push_back(percent);
        return self->percents.size() == self->stop_at ? 1 : 0;
    }

    std::size_t stop_at;  // the call that requests a stop; 0 for none
    std::vector<int> percents;
};
