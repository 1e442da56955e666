// nmkDateTime: a moment as a calendar has it, for stamps and reports.
//
// Local time, by the environment's time zone, or GMT. Seconds are counted in 32 bits: moments from
// 19 January 2038, 03:14:08 GMT on wrap to 1901. Each object is its own; objects may be filled on
// several threads at once.
#pragma once

#include <nmktoolbox/export.h>
#include <utils/utString.h>

#include <cstdint>
#include <ctime>
#include <memory>

/// Only picks an overload; its value is not read.
enum nmkDateTimeGMT { nmk_date_time_gmt = 0 };

class NMKTOOLBOX_EXPORT nmkDateTime {
  public:
    /// Now, in local time.
    nmkDateTime();
    /// Now, in GMT.
    explicit nmkDateTime(nmkDateTimeGMT);
    nmkDateTime(const nmkDateTime& other);
    nmkDateTime& operator=(const nmkDateTime& other);
    ~nmkDateTime();

    /// Becomes now.
    void update();
    /// Becomes so many seconds after the start of 1970 GMT, before it where negative. Cut to 32
    /// bits.
    void update(std::int64_t seconds);

    int year() const;
    /// 1 to 12.
    int month() const;
    /// 1 to 31.
    int day() const;
    int hour() const;
    int minute() const;
    /// 0 to 60, with leap seconds.
    int second() const;

    /// 1 if in GMT, 0 if in local time.
    int using_gmt() const;

    /// What strftime makes of `format`, in English whatever the locale. One blank where it makes
    /// nothing or more than 199 bytes, and for null.
    utString formatted(const char* format) const;

    /// Now in local time, like "Wed Jan 02 02:03:55 1980" and a line feed.
    static utString now_str();

  private:
    /// 1 if the clock can be read.
    static int time_avail();
    /// Makes the record and fills it with now, if there is none.
    void initialise();
    void fill(std::int32_t seconds);

    std::unique_ptr<std::tm> m_time;
    std::int32_t m_using_gmt;
};
