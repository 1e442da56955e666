// travel_prices.h: a price for each end of a one-way line, which shows the search where to look.
//
// Each line has one way out of it and one into it, so the sum of all prices is part of every order:
// taken off the legs at both of their ends it changes no comparison. With the prices of an optimal
// assignment of exits to entries the legs of that assignment cost nothing and all others cost
// something, and the assignment is nearly as long as the shortest order (Kanellakis and
// Papadimitriou, "Local search for the asymmetric traveling salesman problem", Operations Research
// 28, 1980; Johnson et al., "Experimental analysis of heuristics for the ATSP", 2002). So what an
// order wastes is in few legs, and only those are worth exchanging.
#pragma once

#include <vector>

#include "travel_candidates.h"
#include "travel_cell.h"

namespace nmk_ordering {

/// Whether prices may be of use: at most one node in 20 is neither entered nor left.
bool are_nearly_all_one_way(const std::vector<TravelEndType>& types);

/// The prices by node: of a nearly optimal assignment along the neighbours, by the auction
/// algorithm (Bertsekas, "The auction algorithm: a distributed relaxation method for the assignment
/// problem", Annals of Operations Research 14, 1988). Nodes that are neither entered nor left have
/// price 0.
///
///   neighbours  mutual, by cost
///   returns     empty where the prices would be of no use: if more than one exit in 50 cannot be
///               assigned, or all neighbours are at one place
std::vector<double> one_way_prices(const TravelNeighbours& neighbours,
                                   const std::vector<TravelEndType>& types);

/// Takes the prices off the costs of all neighbours, and sorts them again.
void take_off(const std::vector<double>& prices, TravelNeighbours& neighbours);

}  // namespace nmk_ordering
