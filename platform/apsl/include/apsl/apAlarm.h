// apAlarm: callbacks that are repeated at a fixed period.
//
// All handlers are called on one background thread, which is started by the first booking and ends
// with the process. A handler must return soon and must not throw. The periods are counted from the
// booking, so that late calls do not accumulate a delay. A child process made by fork has no such
// thread, and receives no calls for the bookings of its parent.
#pragma once

#include <utils/utExport.h>

/// Why a handler is called.
enum apAlarmHandlerInfo : int {
    ap_alarm_due = 0,       // a period has passed
    ap_alarm_cancelled = 1  // the booking was cancelled; this is its last call
};

class UT_EXPORT apAlarm {
  public:
    using Handler = void (*)(apAlarmHandlerInfo);

    /// Calls `handler` with ap_alarm_due every `seconds` seconds, from one period after the
    /// booking. Returns 0; or -1, and nothing is booked, when `handler` is null, `seconds` is below
    /// 1, or the thread cannot be started. A handler may be booked several times.
    static int book_alarm_call(int seconds, Handler handler);

    /// Cancels all bookings of `handler` and calls it once for each of them, on this thread, with
    /// ap_alarm_cancelled. Returns the number of cancelled bookings. A call with ap_alarm_due that
    /// has begun already may still be running on the background thread.
    static int cancel_alarm_calls(Handler handler);

  private:
    apAlarm() = delete;
};
