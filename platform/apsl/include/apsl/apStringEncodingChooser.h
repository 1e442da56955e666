// apStringEncodingChooser.h: which encoding narrow text is in.
#pragma once

#include <apsl/apIStringEncoding.h>

class UT_EXPORT apStringEncodingChooser {
  public:
    /// The encoding of every utString that does not say otherwise: the thread's code page. Never
    /// null; it lives as long as the process, so the chooser may be let go.
    const apIStringEncoding* ut_encoding() const noexcept;
};
