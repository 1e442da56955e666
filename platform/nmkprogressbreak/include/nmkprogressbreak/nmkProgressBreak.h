// nmkProgressBreak.h: how a long operation tells how far it is, and hears that it should stop.
//
// The caller of a long operation derives from this and passes a pointer; the operation borrows it.
// What an operation does with a request to stop is its own affair, and some finish regardless.
#pragma once

#pragma GCC visibility push(default)

/// A reporter that reports nothing and never asks for a stop.
class nmkProgressBreak {
  public:
    /// A new stretch of work begins. `text` says what it is, and may hold the conversion %3d for
    /// the percentage; it is borrowed for the call. Answers not 0 when a stop is asked for.
    virtual int send_progress_bar_to_0(const char* text);

    /// How many steps make the whole; an estimate, which may be passed.
    virtual void set_range(double range);

    /// One step is done. Answers not 0 when a stop is asked for.
    virtual int increment();

    /// The work stands at `position` of the range. Answers not 0 when a stop is asked for.
    virtual int jump_to(double position);

    /// The stretch of work is over. Answers not 0 when a stop is asked for.
    virtual int send_progress_bar_to_100();

    virtual ~nmkProgressBreak();

  protected:
    nmkProgressBreak() = default;
    nmkProgressBreak(const nmkProgressBreak&) = default;
    nmkProgressBreak& operator=(const nmkProgressBreak&) = default;
};

#pragma GCC visibility pop
