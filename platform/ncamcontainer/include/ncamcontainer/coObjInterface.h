// coObjInterface: how a hash set hashes and compares its elements.
//
// The default works for numbers, enumerations and pointers, for other types whose values are equal
// exactly when their bytes are, and for classes with a function `unsigned int co_hash(const
// Class&)` in their namespace. For other classes, specialise the template or pass another interface
// as the set's template argument.
//
// An interface may also offer `static Element obj_empty()`: the content of an empty slot, for
// elements whose default constructor is costly or has effects. It is never returned to a caller.
#pragma once

#include <ncamcontainer/co_hash.h>
#include <utils/utExport.h>

#include <cstdint>
#include <type_traits>

template <class Element>
struct UT_EXPORT coObjInterface {
    /// Equal elements must have equal hashes.
    static unsigned int obj_hash(const Element& element) {
        // Numbers and pointers first: a pointer must not be converted to a class with a co_hash.
        if constexpr (std::is_integral_v<Element> || std::is_enum_v<Element>) {
            return hash_of_word(static_cast<std::uint64_t>(element));
        } else if constexpr (std::is_pointer_v<Element>) {
            return hash_of_word(reinterpret_cast<std::uintptr_t>(element));
        } else if constexpr (requires { co_hash(element); }) {
            return co_hash(element);
        } else {
            static_assert(std::has_unique_object_representations_v<Element>,
                          "equal values of this type may differ in their bytes: give it a co_hash");
            return co_hash(&element, static_cast<int>(sizeof(Element)));
        }
    }

    /// 0 when `a` and `b` are equal.
    static int obj_compare(const Element& a, const Element& b) { return a == b ? 0 : 1; }

  private:
    // A word needs no loop over its bytes: a product spreads consecutive numbers so that they
    // rarely collide. The product with the factor in coHash::home is 0x528DC6D5, found by a search
    // over random numbers: numbers at any constant distance below 300 are found after at most 12
    // slots on average, in tables of 32 to 32768 slots at half load.
    // Method: multiplicative hashing; Knuth, The Art of Computer Programming, volume 3,
    // section 6.4.
    static unsigned int hash_of_word(std::uint64_t word) {
        const std::uint32_t low = static_cast<std::uint32_t>(word);
        const std::uint32_t high = static_cast<std::uint32_t>(word >> 32);
        return (low + high * 0x85EBCA6BU) * 0xC2040465U;
    }
};
