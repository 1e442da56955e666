// nmkStackTimerSection: times a scope while nmkStackTimer is enabled.
//
//     void refine() {
//         nmkStackTimerSection section("refine");
//         ...
//     }
#pragma once

#include <nmktoolbox/export.h>
#include <nmktoolbox/runtime/nmkStackTimer.h>

class NMKTOOLBOX_EXPORT nmkStackTimerSection {
  public:
    /// Begins a section if timing is enabled. `name` is borrowed until the events are reset: pass a
    /// literal. Null is allowed and records nothing.
    explicit nmkStackTimerSection(const char* name);
    nmkStackTimerSection(const nmkStackTimerSection&) = delete;
    nmkStackTimerSection& operator=(const nmkStackTimerSection&) = delete;

    /// Ends the section if the constructor began one, whether or not timing is still enabled.
    ~nmkStackTimerSection();

  private:
    bool m_started;
};
