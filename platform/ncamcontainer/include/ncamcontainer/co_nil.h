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

/// The object registered for `type`. For the first caller it is `made`, and `made` is then null and
/// its owner the registry, which never deletes it; the library that holds its code stays loaded.
/// Safe from any thread.
UT_EXPORT const void* registered_nil(const NilType& type, std::shared_ptr<const void> made);

/// The nil element of `Container`: default-constructed on first use, never changed, never deleted.
template <class Container, class Element>
const Element& nil_element() {
    static const Element& nil = *static_cast<const Element*>(registered_nil(
        {typeid(Container), sizeof(Element), alignof(Element)}, std::make_shared<const Element>()));
    return nil;
}

}  // namespace nmk_container
