// coHash: the core of the hash sets, open addressing in one array of slots.
//
// The table has 2 to the power of its size exponent slots, and none before the first insertion. An
// element whose slot is taken goes to the next free one; removing an element closes the gap, so
// there are no tombstones. The order of the slots has no meaning to callers.
//
// For a missing element nil() is returned, one object for each set class, which is recognised by
// its address: `&found == &nil()`. A slot records whether it holds an element, so an element that
// equals nil, or becomes equal to it later, is treated like any other. nil() itself is never
// inserted. Elements are copied and must have a working default constructor, copy and assignment.
#pragma once

#include <ncamcontainer/coObjInterface.h>
#include <ncamcontainer/co_nil.h>
#include <utils/utCopy.h>
#include <utils/utExport.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

template <class Element, class Interface = coObjInterface<Element>>
class UT_EXPORT coHash {
  public:
    /// Records both arguments and allocates nothing. The exponent is limited to 0 to 30 and the
    /// load limit, a percentage, to 1 to 99: a search in a full table would not end.
    coHash(int size_exponent, int load_limit) noexcept
        : m_initial_size_exponent(std::clamp(size_exponent, 0, max_size_exponent)),
          m_load_limit(std::clamp(load_limit, 1, 99)),
          m_size_exponent(m_initial_size_exponent) {}
    virtual ~coHash() = default;

    /// What is returned for a missing element: default-constructed, one object for all sets of
    /// this type. Made on first use; safe from any thread.
    static const Element& nil() { return nmk_container::nil_element<coHash, Element>(); }

    /// Number of elements.
    int size() const noexcept { return m_count; }

    /// Number of slots: 0 before the first insertion, then a power of two.
    int arr_size() const noexcept { return m_slots ? 1 << m_size_exponent : 0; }

    /// The exclusive-or of the hashes of all elements.
    unsigned int running_hash() const noexcept { return m_running_hash; }

  protected:
    coHash(const coHash& other) { become(utCopy(), other); }
    coHash(coHash&& other) noexcept { take(other); }
    coHash& operator=(const coHash&) = delete;

    /// Inserts a copy of `element` and returns null, or returns the equal element already stored.
    const Element* add(const Element& element);

    /// The slot of an equal element, or -1.
    int find_index(const Element& element) const {
        if (!m_slots) return -1;
        const std::size_t index = search(element, mark_of(Interface::obj_hash(element)));
        return m_slots[index].used() ? static_cast<int>(index) : -1;
    }

    /// Whether a slot is empty.
    bool obj_null(int index) const noexcept { return !slot(index).used(); }

    /// The element in a slot that is not empty.
    Element& arr_get(int index) const noexcept { return slot(index).element; }

    /// Moves the element out of a slot that is not empty and closes the gap.
    Element remove_at(int index);

    /// The first slot in use from `index` upwards, or -1.
    int next_used(int index) const noexcept {
        for (const int slots = arr_size(); index < slots; ++index) {
            if (slot(index).used()) return index;
        }
        return -1;
    }

    /// The first slot in use, or -1. Slots that are known to be empty are skipped, so emptying a
    /// table from the front takes one pass over it.
    int first_used() noexcept {
        const int first = m_count > 0 ? next_used(m_none_used_below) : -1;
        if (first >= 0) m_none_used_below = first;
        return first;
    }

    /// Called with the number of elements after each insertion: doubles the table while `count`
    /// is not below load_limit / 100.0 times the number of slots.
    virtual void update_size(int count) {
        if (count < m_grow_at) return;
        int exponent = m_size_exponent;
        while (count >= limit_of(exponent)) ++exponent;
        rehash(exponent);
    }

    /// Removes all elements. With `resized` 0, existing slots are emptied and kept; otherwise a new
    /// table of 2 to the power `exponent` slots is made.
    void resize(int exponent, int resized);

    /// Copies, or moves, the elements, the slots and the limits of `other`.
    void become(utCopy, const coHash& other);
    void take(coHash& other) noexcept;

  private:
    // What an empty slot holds: a default element, unless the Interface has a cheaper one.
    static Element empty_element() {
        if constexpr (requires { Interface::obj_empty(); }) {
            return Interface::obj_empty();
        } else {
            return Element{};
        }
    }

    struct Slot {
        Element element = empty_element();
        unsigned int mark = 0;  // mark_of the element's hash; 0 while the slot is empty

        bool used() const noexcept { return mark != 0; }
    };

    // One word holds the hash and records that the slot is used: a hash of 0 is stored as another
    // number.
    static constexpr unsigned int mark_of_hash_0 = 0x80000000U;
    static unsigned int mark_of(unsigned int hash) noexcept {
        return hash != 0 ? hash : mark_of_hash_0;
    }
    static unsigned int hash_in(const Slot& slot) {
        return slot.mark != mark_of_hash_0 ? slot.mark : Interface::obj_hash(slot.element);
    }

    static constexpr int max_size_exponent = 30;

    Slot& slot(int index) const noexcept { return m_slots[static_cast<std::size_t>(index)]; }
    double limit_of(int exponent) const noexcept {
        return m_load_limit / 100.0 * static_cast<double>(std::int64_t{1} << exponent);
    }
    std::size_t mask() const noexcept { return (std::size_t{1} << m_size_exponent) - 1; }

    // The high bits of a product, so that hashes that differ in few bits spread as well. The factor
    // was chosen together with the one in coObjInterface.
    std::size_t home(unsigned int mark) const noexcept {
        const std::uint32_t spread = std::uint32_t{mark} * 0x9E3779B1U;
        return static_cast<std::size_t>(std::uint64_t{spread} >> (32 - m_size_exponent));
    }

    // The slot of an equal element, or the empty slot where the search ended.
    std::size_t search(const Element& element, unsigned int mark) const {
        std::size_t index = home(mark);
        while (m_slots[index].used()) {
            const Slot& candidate = m_slots[index];
            if (candidate.mark == mark && Interface::obj_compare(candidate.element, element) == 0) {
                break;
            }
            index = (index + 1) & mask();
        }
        return index;
    }

    void make_slots(int exponent);
    void rehash(int exponent);
    std::size_t close_gap(std::size_t gap);

    int m_count = 0;
    int m_initial_size_exponent = 0;
    int m_load_limit = 50;
    int m_size_exponent = 0;
    unsigned int m_running_hash = 0;
    std::unique_ptr<Slot[]> m_slots;
    int m_none_used_below = 0;  // no slot before this one is in use
    double m_grow_at = 0.0;     // limit_of the present exponent
};

template <class Element, class Interface>
const Element* coHash<Element, Interface>::add(const Element& element) {
    if (!m_slots) make_slots(m_initial_size_exponent);
    const unsigned int hash = Interface::obj_hash(element);
    const std::size_t index = search(element, mark_of(hash));
    Slot& target = m_slots[index];
    if (target.used()) return &target.element;
    target.element = element;
    target.mark = mark_of(hash);
    m_none_used_below = std::min(m_none_used_below, static_cast<int>(index));
    m_running_hash ^= hash;
    update_size(++m_count);
    return nullptr;
}

template <class Element, class Interface>
Element coHash<Element, Interface>::remove_at(int index) {
    Slot& source = slot(index);
    m_running_hash ^= hash_in(source);
    --m_count;
    Element removed = std::move(source.element);
    m_slots[close_gap(static_cast<std::size_t>(index))] = Slot();
    return removed;
}

// Moves each later element of the run that may be nearer to its home slot into the gap; returns the
// slot that is empty in the end.
template <class Element, class Interface>
std::size_t coHash<Element, Interface>::close_gap(std::size_t gap) {
    for (std::size_t i = (gap + 1) & mask(); m_slots[i].used(); i = (i + 1) & mask()) {
        const std::size_t from_home = (i - home(m_slots[i].mark)) & mask();
        const std::size_t from_gap = (i - gap) & mask();
        if (from_home < from_gap) continue;
        m_slots[gap] = std::move(m_slots[i]);
        gap = i;
    }
    return gap;
}

template <class Element, class Interface>
void coHash<Element, Interface>::make_slots(int exponent) {
    if (exponent > max_size_exponent) throw std::length_error("coHash: too many elements");
    m_slots = std::make_unique<Slot[]>(std::size_t{1} << exponent);
    m_size_exponent = exponent;
    m_grow_at = limit_of(exponent);
    m_none_used_below = 0;
}

// The elements are known to differ, so each goes to the first empty slot from its home.
template <class Element, class Interface>
void coHash<Element, Interface>::rehash(int exponent) {
    const std::size_t old_slots = static_cast<std::size_t>(arr_size());
    const std::unique_ptr<Slot[]> old = std::move(m_slots);
    make_slots(exponent);
    for (std::size_t i = 0; i < old_slots; ++i) {
        if (!old[i].used()) continue;
        std::size_t index = home(old[i].mark);
        while (m_slots[index].used()) index = (index + 1) & mask();
        m_slots[index] = std::move(old[i]);
    }
}

template <class Element, class Interface>
void coHash<Element, Interface>::resize(int exponent, int resized) {
    if (resized == 0 && m_slots) {
        std::fill_n(m_slots.get(), arr_size(), Slot());
        m_none_used_below = 0;
    } else {
        make_slots(exponent);
    }
    m_count = 0;
    m_running_hash = 0;
}

template <class Element, class Interface>
void coHash<Element, Interface>::become(utCopy, const coHash& other) {
    if (this == &other) return;
    std::unique_ptr<Slot[]> copied;
    if (other.m_slots) {
        const std::size_t slots = static_cast<std::size_t>(other.arr_size());
        copied = std::make_unique<Slot[]>(slots);
        std::copy_n(other.m_slots.get(), slots, copied.get());
    }
    m_slots = std::move(copied);
    m_count = other.m_count;
    m_initial_size_exponent = other.m_initial_size_exponent;
    m_load_limit = other.m_load_limit;
    m_size_exponent = other.m_size_exponent;
    m_running_hash = other.m_running_hash;
    m_none_used_below = other.m_none_used_below;
    m_grow_at = other.m_grow_at;
}

template <class Element, class Interface>
void coHash<Element, Interface>::take(coHash& other) noexcept {
    m_slots = std::move(other.m_slots);
    m_count = std::exchange(other.m_count, 0);
    m_initial_size_exponent = other.m_initial_size_exponent;
    m_load_limit = other.m_load_limit;
    m_size_exponent = std::exchange(other.m_size_exponent, other.m_initial_size_exponent);
    m_running_hash = std::exchange(other.m_running_hash, 0);
    m_none_used_below = std::exchange(other.m_none_used_below, 0);
    m_grow_at = other.m_grow_at;
}
