// apIStringEncoding.h: what turns narrow text into wide text and back.
#pragma once

#include <apsl/apString.h>
#include <utils/utExport.h>
#include <utils/utObserverPtr.h>
#include <utils/utString.h>

/// Encodings have no state that changes: one object may serve many threads. It can be observed, so
/// that an encoding that is destroyed is not used.
class UT_EXPORT apIStringEncoding : public utObservable {
  public:
    virtual ~apIStringEncoding();

    /// Wide text of `text`; the null string gives the invalid one. `status` becomes 1 when the
    /// conversion is exact, 0 when something had to be substituted.
    virtual apString decode(const utString& text, int& status) const = 0;

    /// Narrow text of `text`; the invalid string gives the null one. `status` as above.
    virtual utString encode(const apString& text, int& status) const = 0;

  protected:
    apIStringEncoding() = default;
    apIStringEncoding(const apIStringEncoding&) = default;
    apIStringEncoding& operator=(const apIStringEncoding&) = default;
};
