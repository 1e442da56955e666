// nmkSortType: the names of the types.
#include <nmktoolbox/ordering/nmkSortType.h>

namespace {

constexpr const char* names[] = {"None", "Shortest", "Closest", "Concentric", "Radial",
                                 "X",    "Y",        "DIAG1",   "DIAG2",      "XZ",
                                 "YZ",   "DIAG1Z",   "DIAG2Z",  "Cylinder"};

}  // namespace

// Deliberate: nmkSortTypeShortestOneWay has no name of its own and is "Invalid" too, though it is
// supported; the name is for display, where it is a "Shortest" with a switch beside it.
const char* _nmkSortType_get_str(nmkSortType type) {
    const bool has_name = type >= nmkSortTypeNone && type <= nmkSortTypeCylinder;
    return has_name ? names[static_cast<int>(type)] : "Invalid";
}
