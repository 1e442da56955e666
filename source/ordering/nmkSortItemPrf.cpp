#include <nmktoolbox/ordering/nmkSortItemPrf.h>

int nmkSortItemPrf::unique() const {
    if (get() == nullptr) return 1;
    return !external() && use_count() == 1 ? 1 : 0;
}
