// coObjInterface: what a hash set has to know about its elements.
//
// The default serves values whose bytes tell them apart (numbers, enumerations, pointers), and
// classes that offer `unsigned int co_hash(const Class&)` beside them. A class that wants it
// otherwise specialises the template, or names an interface of its own as the set's argument.
#pragma once

#include <ncamcontainer/co_hash.h>

#include <type_traits>

template <class Element>
struct coObjInterface {
    /// Equal elements must have equal hashes.
    static unsigned int obj_hash(const Element& element) {
        if constexpr (requires { co_hash(element); }) {
            return co_hash(element);
        } else {
            static_assert(std::has_unique_object_representations_v<Element>,
                          "the bytes of this type do not tell its values apart: give it a co_hash");
            return co_hash(&element, static_cast<int>(sizeof(Element)));
        }
    }

    /// 0 when the two are equal.
    static int obj_compare(const Element& a, const Element& b) { return a == b ? 0 : 1; }
};
