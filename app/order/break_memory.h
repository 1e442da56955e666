// break_memory.h: a progress reporter that hands everything on and remembers a wish to stop.
//
// Annealing does not listen to a break; between two tools the tool itself can, if the wish was
// remembered.
#pragma once

#include <nmkprogressbreak/nmkProgressBreak.h>

namespace nmk_app {

class BreakMemory : public nmkProgressBreak {
  public:
    /// `reporter` is borrowed and may be null.
    explicit BreakMemory(nmkProgressBreak* reporter) : target(reporter) {}

    /// Whether any step so far was answered with a wish to stop.
    bool asked() const { return asked_for; }

    int send_progress_bar_to_0(const char* text) override {
        return target == nullptr ? 0 : target->send_progress_bar_to_0(text);
    }
    void set_range(double range) override {
        if (target != nullptr) {
            target->set_range(range);
        }
    }
    int increment() override { return target == nullptr ? 0 : noted(target->increment()); }
    int jump_to(double position) override {
        return target == nullptr ? 0 : noted(target->jump_to(position));
    }
    int send_progress_bar_to_100() override {
        return target == nullptr ? 0 : target->send_progress_bar_to_100();
    }

  private:
    int noted(int answer) {
        asked_for = asked_for || answer != 0;
        return answer;
    }

    nmkProgressBreak* target;
    bool asked_for = false;
};

}  // namespace nmk_app
