// nil_library.h: the addresses of nil elements as another library of the process sees them.
#pragma once

#include <ncamcontainer/builtin_containers.h>
#include <ncamcontainer/coSortedList.h>
#include <nmktoolbox/collections.h>

#include <array>
#include <functional>

namespace nmk_test {

/// An element whose class is not exported by any library; it has virtual functions.
struct HiddenElement {
    virtual ~HiddenElement() = default;
    virtual int number() const { return 42; }
    bool operator==(const HiddenElement&) const { return true; }
};

using NilAddresses = std::array<const void*, 8>;

/// The addresses of nil of one class of each family, as the calling library sees them.
inline NilAddresses nil_addresses() {
    return {&intcoSet::nil(),
            &CRuntimeClassPtrObjcoSet::nil(),
            &nmkTransPairutStringcoTablePcoSet::nil(),
            &coPageArr<HiddenElement>::nil(),
            &coDList<HiddenElement>::nil(),
            &utStringcoDList::nil(),
            &coSList<HiddenElement>::nil(),
            &coSortedList<int, std::less<int>>::nil()};
}

}  // namespace nmk_test
