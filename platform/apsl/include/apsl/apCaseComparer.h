// apCaseComparer: compares texts without regard to the case of letters.
#pragma once

#include <apsl/apIStringEncoding.h>
#include <apsl/apString.h>
#include <utils/utExport.h>

class UT_EXPORT apCaseComparer {
  public:
    /// The comparer for texts of an encoding. Cases are those of Unicode in all encodings.
    explicit apCaseComparer(const apIStringEncoding&) noexcept {}

    /// Negative, 0 or positive as `left` sorts before, with or after `right`, by the code units of
    /// both in lower case (ap_to_lower). The invalid string equals itself and sorts before others.
    int compare(const apString& left, const apString& right) const noexcept;
};
