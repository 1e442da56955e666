// nmkIterTools: the class whose static functions help with iteration; it has no objects.
#pragma once

#include <nmktoolbox/export.h>

class NMKTOOLBOX_EXPORT nmkIterTools {
  private:
    nmkIterTools() = default;
    ~nmkIterTools() = default;
};
