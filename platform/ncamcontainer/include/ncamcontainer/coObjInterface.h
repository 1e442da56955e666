// coObjInterface: what a hash set has to know about its elements.
//
// The default serves numbers, enumerations and pointers, other values whose bytes tell them apart,
// and classes that offer `unsigned int co_hash(const Class&)` beside them. A class that wants it
// otherwise specialises the template, or names an interface of its own as the set's argument.
//
// An interface may also offer `static Element obj_empty()`: what a slot holds while it is empty,
// for elements whose default constructor is costly or has effects. Nobody ever sees such an
// element.
#pragma once

#include <ncamcontainer/co_hash.h>
#include <utils/utExport.h>

#include <cstdint>
#include <type_traits>

template <class Element>
struct UT_EXPORT coObjInterface {
    /// Equal elements must have equal hashes.
    static unsigned int obj_hash(const Element& element) {
        // Words first: a pointer must not turn into a class that is hashed by it.
        if constexpr (std::is_integral_v<Element> || std::is_enum_v<Element>) {
            return hash_of_word(static_cast<std::uint64_t>(element));
        } else if constexpr (std::is_pointer_v<Element>) {
            return hash_of_word(reinterpret_cast<std::uintptr_t>(element));
        } else if constexpr (requires { co_hash(element); }) {
            return co_hash(element);
        } else {
            static_assert(std::has_unique_object_representations_v<Element>,
                          "the bytes of this type do not tell its values apart: give it a co_hash");
            return co_hash(&element, static_cast<int>(sizeof(Element)));
        }
    }

    /// 0 when the two are equal.
    static int obj_compare(const Element& a, const Element& b) { return a == b ? 0 : 1; }

  private:
    // A word needs no loop over its bytes: a product spreads numbers in a row so that they hardly
    // ever meet. With the factor in coHash::home the factors come to 0x528DC6D5, found by a search
    // with random numbers: numbers at any equal distance below 300 go through at most 12 slots on
    // average, in tables of 32 to 32768 slots at half load.
    // Method: multiplicative hashing; Knuth, The Art of Computer Programming, volume 3,
    // section 6.4.
    static unsigned int hash_of_word(std::uint64_t word) {
        const std::uint32_t low = static_cast<std::uint32_t>(word);
        const std::uint32_t high = static_cast<std::uint32_t>(word >> 32);
        return (low + high * 0x85EBCA6BU) * 0xC2040465U;
    }
};
