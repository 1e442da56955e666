// nmkProgressBreak.h: how a long operation reports its progress and learns that it should stop.
//
// The caller of a long operation derives from this and passes a pointer; the operation borrows it.
// Each operation documents what it does with a request to stop; some ignore it.
#pragma once

#pragma GCC visibility push(default)

/// A reporter that reports nothing and never requests a stop.
class nmkProgressBreak {
  public:
    /// A new stage of work begins. `text` describes it, and may contain the conversion %3d for the
    /// percentage; it is borrowed for the call. Returns non-zero to request a stop.
    virtual int send_progress_bar_to_0(const char* text);

    /// The number of steps of the stage: an estimate, which may be exceeded.
    virtual void set_range(double range);

    /// One step is done. Returns non-zero to request a stop.
    virtual int increment();

    /// The work has reached `position` of the range. Returns non-zero to request a stop.
    virtual int jump_to(double position);

    /// The stage is complete. Returns non-zero to request a stop.
    virtual int send_progress_bar_to_100();

    virtual ~nmkProgressBreak();

  protected:
    nmkProgressBreak() = default;
    nmkProgressBreak(const nmkProgressBreak&) = default;
    nmkProgressBreak& operator=(const nmkProgressBreak&) = default;
};

#pragma GCC visibility pop
