// co_nil.h: the nil element of each container class, one object in a process.
//
// Callers recognise a missing element by the address of nil, so every library of a process has to
// see the same object. A static of a template is not enough: a library that exports only what it
// lists, a plugin or a program gets a copy of its own. The objects are therefore kept by this
// library, under the type of the container class, and each library only remembers the address.
#pragma once

#include <utils/utExport.h>

#include <cstddef>
#include <memory>
#include <typeinfo>

namespace nmk_container {

/// What the process-wide registry has to know about a nil element.
struct NilType {
    const std::type_info& container;  // the class whose nil it is
    std::size_t size;                 // of the element, in bytes
    std::size_t alignment;            // of the element, in bytes
};

/// The object registered for `type`; null before one is.
UT_EXPORT const void* registered_nil(const NilType& type);

/// The object registered for `type`. For the first caller it is `made`, and `made` is then null and
/// its owner the registry, which never deletes it; the library that holds its code stays loaded.
/// Safe from any thread.
UT_EXPORT const void* registered_nil(const NilType& type, std::shared_ptr<const void> made);

/// How the nil element of an element class is made. A class whose default constructor has effects
/// specialises it.
template <class Element>
struct NilMaker {
    static std::shared_ptr<const Element> make() { return std::make_shared<const Element>(); }
};

/// The nil element of `Container`: made on first use, never changed, never deleted.
template <class Container, class Element>
const Element& nil_element() {
    static const Element& nil = []() -> const Element& {
        const NilType type{typeid(Container), sizeof(Element), alignof(Element)};
        const void* found = registered_nil(type);
        if (found == nullptr) found = registered_nil(type, NilMaker<Element>::make());
        return *static_cast<const Element*>(found);
    }();
    return nil;
}

}  // namespace nmk_container
