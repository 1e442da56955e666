#include <nmktoolbox/ordering/nmkItemComparator.h>
#include <nmktoolbox/ordering/nmkSortedList.h>

bool nmkSortItemPrfOrder::operator()(const nmkSortItemPrf& a, const nmkSortItemPrf& b) const {
    return nmkItemComparator::compare(a, b) != 0;
}

nmkSortedList::nmkSortedList(const nmkSortItemPrf& representative)
    : nmkSortedList(new nmkSortItemPrfcoSortedList, representative) {}

nmkSortedList::nmkSortedList(nmkSortItemPrfcoSortedList* claimed,
                             const nmkSortItemPrf& representative)
    : nmkSortItemPrf(representative), m_row(claimed) {}

nmkSortItemPrf nmkSortedList::sort_value() const { return nmkSortItemPrf(get()); }

bool nmkSortedListOrder::operator()(const nmkSortedList& a, const nmkSortedList& b) const {
    return nmkItemComparator::second_compare(a.sort_value(), b.sort_value()) != 0;
}
