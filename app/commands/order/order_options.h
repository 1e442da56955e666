// order_options.h: the command line of `nmk order`.
//
// Lengths on the command line are in the unit of --units, and without it in the unit of the file;
// order_request converts them to millimetres once the file has been read.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "commands/order/debug_drawing.h"
#include "commands/order/gcode_options.h"
#include "commands/order/machining_options.h"
#include "commands/order/order_job.h"
#include "formats/job/machining_job.h"
#include "shell/option_table.h"

namespace nmk_order {

/// A place in the unit of the command line.
using Place = std::array<double, 3>;

/// The command line of `nmk order`, checked.
struct OrderOptions {
    std::vector<std::string> files;  // as given, "-" for standard input
    std::string file_name;           // the one of them that the other names below belong to
    std::optional<nmk_job::JobFormat> format;  // where the content of a file leaves it open
    OrderType type = best_order;
    std::optional<double> effort;      // steps of the search for each item
    std::optional<double> time_limit;  // seconds, from reading to the end of the search
    bool across_tools = false;
    std::optional<Place> start = Place{0.0, 0.0, 0.0};  // empty: free
    std::optional<Place> end;                           // empty: free
    bool ends_at_start = false;                         // `end` is then empty
    bool is_closed = false;                             // back to the first item
    std::string avoid_file;                             // of keep-outs; empty: none
    bool skip_blocked = false;                          // leaves out the items that they block
    std::optional<double> tolerance;                    // empty: default_tolerance
    std::optional<nmk_job::JobUnits> units;
    MachiningOptions machining;
    GcodeOptions gcode;
    TravelMeasure measure;
    std::string output_file, svg_file, html_file;  // empty: not written
    bool keeps_format = false;                     // the output file gets the format that was read
    bool in_place = false;
    std::string output_folder;
    int jobs = 1;
    DebugChannel debug_channel;  // has a name if debug_svg_file has one
    std::string debug_svg_file;
    bool allow_empty = false;  // a file without items is not an error
    bool json = false;
    bool quiet = false;
};

/// The largest difference of items in one row of a grid, in mm: above the rounding of drill files,
/// below any distance between two rows of holes.
constexpr double default_tolerance = 0.1;

/// The options of one of several files, with the names of its own.
OrderOptions options_of_file(const OrderOptions& options, const std::string& file);

/// Declares the options, which are read into `options`.
void declare_order_options(nmk_shell::OptionTable& table, OrderOptions& options);

/// The request for a job with these file units. The deadline of the search, where there is one, is
/// the time limit from `begin` on.
OrderRequest order_request(const OrderOptions& options, nmk_job::JobUnits file_units,
                           OrderRequest::Clock::time_point begin = OrderRequest::Clock::now());

}  // namespace nmk_order
