// nmkSortList: every operation is one of the list's cursor.
#include <nmktoolbox/ordering/nmkSortList.h>

nmkSortList::nmkSortList() : m_cursor(m_items) {}
nmkSortList::~nmkSortList() = default;

void nmkSortList::add_item(const nmkSortItemPrf& item) { m_cursor.insert_last(item); }

// Deliberate: the other list is walked by its own cursor, so that of a list whose walk was broken
// off only the rest is added. Its items do not change, and in that sense it is const.
void nmkSortList::add_items(const nmkSortList& other) {
    nmkSortList& walked = const_cast<nmkSortList&>(other);
    if (&walked != this) {
        while (walked.forwards() != 0) add_item(walked.read());
        return;
    }
    std::vector<nmkSortItemPrf> found;  // adding while walking would never end
    while (forwards() != 0) found.push_back(read());
    for (const nmkSortItemPrf& item : found) add_item(item);
}

int nmkSortList::size() const { return m_items.size(); }

int nmkSortList::forwards() { return ++m_cursor; }

void nmkSortList::clear() {
    m_cursor.reset();
    m_items.clear();
}

void nmkSortList::remove_first() { m_cursor.remove_first(); }

nmkSortItemPrf& nmkSortList::read_first() {
    return m_items.size() == 0 ? no_item() : *m_items.begin();
}

void nmkSortList::remove_backwards() { m_cursor.remove_backwards(); }

void nmkSortList::reset() { m_cursor.reset(); }

nmkSortItemPrf& nmkSortList::read() { return m_cursor.valid() ? m_cursor.element() : no_item(); }

nmkSortItemPrf& nmkSortList::operator[](int position) {
    return m_cursor.set_index(position) != 0 ? m_cursor.element() : no_item();
}

void nmkSortList::take_items(nmkSortList& other) {
    other.reset();
    m_items.take_last(other.m_items);
}

void nmkSortList::take_items(nmkSortList& other, const std::vector<int>& positions) {
    other.reset();
    m_items.take_last(other.m_items, positions);
}

// Reset each time: a caller may have written to the reference that was returned before.
nmkSortItemPrf& nmkSortList::no_item() {
    m_nothing = nmkSortItemPrf();
    return m_nothing;
}
