#include <nmktoolbox/ordering/nmkSortType.h>

#include "ordering/sort_types.h"

const char* _nmkSortType_get_str(nmkSortType type) {
    const nmk_ordering::SortType* const row = nmk_ordering::find_sort_type(type);
    return row != nullptr ? row->name : "Invalid";
}
