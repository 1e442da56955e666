// blocked_items.h: the items that keep-outs block, and what becomes of a job that has some.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "commands/order/order_job.h"
#include "formats/job/machining_job.h"
#include "text/result.h"

namespace nmk_order {

/// An item that is not to be cut, and why.
struct BlockedItem {
    std::size_t item;
    std::string reason;  // "inside clamps.csv:3"
};

/// Whether the time for a check is over; empty: never.
using IsOver = std::function<bool()>;

/// The items that begin or end inside a keep-out, whose cut crosses one, or that keep-outs separate
/// from the start and the end place; where both are free, from most of the items.
/// An Error where the start or the end place is blocked itself, and where the time is over before
/// all items are checked: `is_over` is asked before each that keep-outs may enclose, since that
/// check alone takes long.
nmk_text::Result<std::vector<BlockedItem>> blocked_items(const nmk_job::MachiningJob& job,
                                                         const TravelEnds& ends,
                                                         const IsOver& is_over = {});

/// "hole 12 of T1 at (3, 4) mm: inside clamps.csv:3", counted from 1 in the order of the file.
std::string blocked_text(const nmk_job::MachiningJob& job, const BlockedItem& blocked);

/// Why a job is not ordered, and the exit code; no text where it is.
struct Refusal {
    std::string text;
    int code = 0;
};

/// Refuses a job with blocked items, or marks these as left out of the order, with a note of the
/// job for each; refuses it where none is left, and where the deadline of the request is over
/// before all items are checked.
Refusal avoid_keep_outs(nmk_job::MachiningJob& job, OrderRequest& request, bool skips_blocked);

}  // namespace nmk_order
