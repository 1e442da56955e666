// coHash: the core of the hash sets, open addressing in one array of slots.
//
// The table has 2 to the power of its size exponent slots and none before the first insertion. A
// collision goes on to the next slot; taking an element out closes the gap, so that there are no
// tombstones. The order of the slots has no meaning to callers.
//
// A missing element is answered as nil(), one object for each kind of set, and told by its
// identity: `&answer == &nil()`. A slot knows by itself whether it holds an element, so an element
// that equals nil, or comes to equal it later, is an element like any other. nil() itself is never
// put in. Elements are copied in and must have a working default constructor, copy and assignment.
#pragma once

#include <ncamcontainer/coObjInterface.h>
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
    /// Records both and allocates nothing. The exponent is brought inside 0 to 30 and the load
    /// limit, a percentage, inside 1 to 99: a full table would make a search endless.
    coHash(int size_exponent, int load_limit) noexcept
        : m_initial_size_exponent(std::clamp(size_exponent, 0, largest_size_exponent)),
          m_load_limit(std::clamp(load_limit, 1, 99)),
          m_size_exponent(m_initial_size_exponent) {}
    virtual ~coHash() = default;

    /// The element that stands for "none". Made on first use; safe from any thread.
    static const Element& nil() {
        static const Element nil_element{};
        return nil_element;
    }

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

    /// Puts a copy of `element` in and answers null, or answers the equal element already there.
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

    /// The same from the beginning; a table that is emptied from the front is not searched anew
    /// each time.
    int first_used() noexcept {
        const int first = m_count > 0 ? next_used(m_none_used_below) : -1;
        if (first >= 0) m_none_used_below = first;
        return first;
    }

    /// Told the number of elements after each insertion: doubles the table while `count` is not
    /// below load_limit / 100.0 times the number of slots.
    virtual void update_size(int count) {
        if (count < m_grow_at) return;
        int exponent = m_size_exponent;
        while (count >= limit_of(exponent)) ++exponent;
        rehash(exponent);
    }

    /// Drops all elements. With `resized` 0, slots that exist are made empty and kept; otherwise
    /// the table is made anew with 2 to the power `exponent` slots.
    void resize(int exponent, int resized);

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

    // One word serves as hash and as sign of an element: a hash of 0 is noted as another number.
    static constexpr unsigned int mark_of_hash_0 = 0x80000000U;
    static unsigned int mark_of(unsigned int hash) noexcept {
        return hash != 0 ? hash : mark_of_hash_0;
    }
    static unsigned int hash_in(const Slot& place) {
        return place.mark != mark_of_hash_0 ? place.mark : Interface::obj_hash(place.element);
    }

    static constexpr int largest_size_exponent = 30;

    Slot& slot(int index) const noexcept { return m_slots[static_cast<std::size_t>(index)]; }
    double limit_of(int exponent) const noexcept {
        return m_load_limit / 100.0 * static_cast<double>(std::int64_t{1} << exponent);
    }
    std::size_t mask() const noexcept { return (std::size_t{1} << m_size_exponent) - 1; }

    // The high bits of a product, so that hashes that differ in few bits spread as well. The factor
    // is matched by the one in coObjInterface.
    std::size_t home(unsigned int mark) const noexcept {
        const std::uint32_t spread = std::uint32_t{mark} * 0x9E3779B1U;
        return static_cast<std::size_t>(std::uint64_t{spread} >> (32 - m_size_exponent));
    }

    // The slot of an equal element, or the empty one where the search ended.
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
    Slot& place = m_slots[index];
    if (place.used()) return &place.element;
    place.element = element;
    place.mark = mark_of(hash);
    m_none_used_below = std::min(m_none_used_below, static_cast<int>(index));
    m_running_hash ^= hash;
    update_size(++m_count);
    return nullptr;
}

template <class Element, class Interface>
Element coHash<Element, Interface>::remove_at(int index) {
    Slot& place = slot(index);
    m_running_hash ^= hash_in(place);
    --m_count;
    Element removed = std::move(place.element);
    m_slots[close_gap(static_cast<std::size_t>(index))] = Slot();
    return removed;
}

// Moves each later element of the run that may stand nearer to its home into the gap; answers the
// slot that is left over.
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
    if (exponent > largest_size_exponent) throw std::length_error("coHash: too many elements");
    m_slots = std::make_unique<Slot[]>(std::size_t{1} << exponent);
    m_size_exponent = exponent;
    m_grow_at = limit_of(exponent);
    m_none_used_below = 0;
}

// The elements are different already, so each goes to the first empty slot.
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
