// travel_ends: the places of a move.

#include "commands/order/travel_ends.h"

#include "commands/order/avoided.h"

namespace nmk_order {

std::vector<giPoint3> places_of_move(const giPoint3& from, const giPoint3& to,
                                     const TravelEnds& ends) {
    std::vector<giPoint3> places = {from};
    if (ends.avoided != nullptr) {
        const auto bends = ends.avoided->ways().bends(from, to);
        if (bends) {
            places.insert(places.end(), bends->begin(), bends->end());
        }
    }
    places.push_back(to);
    return places;
}

}  // namespace nmk_order
