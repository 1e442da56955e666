// nmkItemSorter: the sorter that keeps the order in which items are added.
#include <nmktoolbox/ordering/nmkItemSorter.h>

nmkItemSorter::nmkItemSorter() = default;
nmkItemSorter::~nmkItemSorter() = default;

void nmkItemSorter::add_item(nmkSortItemPrf item) { sorted.add_item(item); }

void nmkItemSorter::add_items(nmkSortList& items) { sorted.add_items(items); }

nmkSortList& nmkItemSorter::sort(double) { return sorted; }
