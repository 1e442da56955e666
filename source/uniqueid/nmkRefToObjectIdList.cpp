#include <nmktoolbox/uniqueid/nmkRefToObjectIdList.h>

nmkRefToObjectIdList::nmkRefToObjectIdList() : m_cursor(m_items) {}

nmkRefToObjectIdList::nmkRefToObjectIdList(const nmkRefToObjectIdList& other)
    : m_items(utCopy(), other.m_items), m_cursor(m_items) {}

nmkRefToObjectIdList& nmkRefToObjectIdList::operator=(const nmkRefToObjectIdList& other) {
    if (this == &other) return *this;
    m_items.become(utCopy(), other.m_items);
    m_cursor.reset();
    return *this;
}

void nmkRefToObjectIdList::add_item(const nmkRefToObjectId& reference) {
    for (nmkRefToObjectIdListIT item(*this); ++item != 0;) {
        if (item() == reference) return;
    }
    m_items.insert_last(reference);
}

void nmkRefToObjectIdList::reset() { m_cursor.reset(); }

int nmkRefToObjectIdList::forwards() { return ++m_cursor; }

const nmkRefToObjectId& nmkRefToObjectIdList::read() const {
    return m_cursor.valid() != 0 ? m_cursor.read() : nmkRefToObjectIdcoSet::nil();
}

void nmkRefToObjectIdList::remove() { m_cursor.remove(); }

int nmkRefToObjectIdList::num_valid() const {
    // Deliberate: counts with the list's own cursor and leaves it past the last item, which callers
    // rely on to start a walk.
    int count = 0;
    m_cursor.reset();
    while (++m_cursor != 0) count += m_cursor.read().is_valid();
    return count;
}

nmkRefToObjectIdListIT::nmkRefToObjectIdListIT(const nmkRefToObjectIdList& list)
    : m_position(list.m_items) {}

void nmkRefToObjectIdListIT::reset() { m_position.reset(); }

int nmkRefToObjectIdListIT::operator++() {
    while (++m_position != 0) {
        if (m_position.read().is_valid() != 0) return 1;
    }
    return 0;
}

const nmkRefToObjectId& nmkRefToObjectIdListIT::operator()() const {
    return m_position.valid() != 0 ? m_position.read() : nmkRefToObjectIdcoSet::nil();
}
