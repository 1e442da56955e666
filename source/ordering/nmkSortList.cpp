// nmkSortList: every operation is one of the list's cursor.
#include <nmktoolbox/ordering/nmkSortList.h>

nmkSortList::nmkSortList() : cursor(items) {}
nmkSortList::~nmkSortList() = default;

void nmkSortList::add_item(const nmkSortItemPrf& item) { cursor.insert_last(item); }

// Deliberate: the walk is by the other list's own cursor, from where it stands, so a list that was
// half read gives its other half. Its items do not change, and in that sense it is const.
void nmkSortList::add_items(const nmkSortList& other) {
    nmkSortList& walked = const_cast<nmkSortList&>(other);
    if (&walked != this) {
        while (walked.forwards() != 0) add_item(walked.read());
        return;
    }
    std::vector<nmkSortItemPrf> found;  // first all, then added, or the walk would never end
    while (forwards() != 0) found.push_back(read());
    for (const nmkSortItemPrf& item : found) add_item(item);
}

int nmkSortList::size() const { return items.size(); }

int nmkSortList::forwards() { return ++cursor; }

void nmkSortList::clear() {
    cursor.reset();
    items.clear();
}

void nmkSortList::remove_first() { cursor.remove_first(); }

nmkSortItemPrf& nmkSortList::read_first() { return items.size() == 0 ? no_item() : *items.begin(); }

void nmkSortList::remove_backwards() { cursor.remove_backwards(); }

void nmkSortList::reset() { cursor.reset(); }

nmkSortItemPrf& nmkSortList::read() { return cursor.valid() ? cursor.element() : no_item(); }

nmkSortItemPrf& nmkSortList::operator[](int position) {
    return cursor.set_index(position) != 0 ? cursor.element() : no_item();
}

void nmkSortList::take_items(nmkSortList& other) {
    other.reset();
    items.take_last(other.items);
}

void nmkSortList::take_items(nmkSortList& other, const std::vector<int>& places) {
    other.reset();
    items.take_last(other.items, places);
}

// Made void anew each time: a caller may have written to the one handed out before.
nmkSortItemPrf& nmkSortList::no_item() {
    nothing = nmkSortItemPrf();
    return nothing;
}
