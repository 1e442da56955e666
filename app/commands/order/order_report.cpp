// order_report: everything that is reported of one run of `nmk order`.

#include "commands/order/order_report.h"

#include <utility>

#include "commands/order/gcode_output.h"
#include "commands/order/job_notes.h"
#include "commands/order/length_texts.h"
#include "commands/order/sort_type_names.h"
#include "files/read_whole_file.h"
#include "text/number_format.h"

namespace nmk_order {

namespace {

std::string counted(std::size_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

/// "(1.5, 2) mm"
std::string point_text(const giPoint3& p, nmk_job::JobUnits units) {
    const auto number = [&](double length) {
        return nmk_text::short_number(length / nmk_job::mm_of(units), 3);
    };
    return "(" + number(p.x) + ", " + number(p.y) + (p.z == 0.0 ? "" : ", " + number(p.z)) + ") " +
           length_unit(units);
}

/// " (time)"; "" for the length.
std::string measure_text(nmkTravelMeasure kind) {
    return kind == nmkTravelMeasure::length ? "" : " (" + std::string(measure_name(kind)) + ")";
}

/// " from (0, 0) mm to (1, 2) mm"
std::string ends_text(const TravelEnds& ends, nmk_job::JobUnits units) {
    const std::string start = ends.start ? " from " + point_text(*ends.start, units) : "";
    return start + (ends.is_closed           ? ", back to the first item"
                    : !ends.end              ? ""
                    : ends.end == ends.start ? " and back"
                                             : " to " + point_text(*ends.end, units));
}

std::vector<BentMove> bent_moves(const nmk_job::MachiningJob& job, const OrderedJob& ordered) {
    std::vector<BentMove> moves;
    if (avoided_by(ordered.runs) == nullptr) {
        return moves;
    }
    for (std::size_t r = 0; r < ordered.runs.size(); ++r) {
        const OrderRun& run = ordered.runs[r];
        each_move(job.items, run.of(ordered.after), run.ends,
                  [&](const giPoint3& from, const giPoint3& to) {
                      std::vector<giPoint3> places = places_of_move(from, to, run.ends);
                      if (places.size() > 2) {
                          moves.push_back({r, std::move(places)});
                      }
                  });
    }
    return moves;
}

std::vector<std::size_t> items_left_out(const std::vector<bool>& left_out) {
    std::vector<std::size_t> items;
    for (std::size_t i = 0; i < left_out.size(); ++i) {
        if (left_out[i]) {
            items.push_back(i);
        }
    }
    return items;
}

/// A drill file or a table has no moves; the machine goes straight from item to item.
std::string note_of_lost_bends(const OrderReport& report) {
    const OrderOptions& options = report.options;
    const std::size_t count = report.bent_moves.size();
    if (count == 0 || options.output_file.empty() || writes_gcode(options)) {
        return {};
    }
    return counted(count, "move") +
           " around keep-outs cannot be written to this output, only the order; expected G-code "
           "(-o NAME.nc) or --json for the moves";
}

}  // namespace

OrderReport report_of(const OrderOptions& options, const OrderRequest& request,
                      const nmk_job::MachiningJob& job, const OrderedJob& ordered) {
    OrderReport report;
    report.options = options;
    report.options.file_name = nmk_files::input_name(options.file_name);
    report.request = request;
    report.file_units = job.units;
    report.figures = measure_order(job, ordered, request.measure.rapids);
    report.tool_changes_before = ordered.tool_changes_before;
    report.tool_changes_after = ordered.tool_changes_after;
    report.stopped = ordered.stopped;
    report.bent_moves = bent_moves(job, ordered);
    report.left_out = items_left_out(request.left_out);
    report.notes = ordered.notes;
    const std::vector<std::string> of_job = job_notes(job);
    report.notes.insert(report.notes.end(), of_job.begin(), of_job.end());
    if (std::string note = note_of_lost_bends(report); !note.empty()) {
        report.notes.push_back(std::move(note));
    }
    return report;
}

std::string report_summary(const OrderReport& report) {
    const OrderRequest& request = report.request;
    const std::size_t tools = report.figures.tools.size();
    return counted(report.figures.total.items, "item") + ", " +
           (request.across_tools ? "across tools" : counted(tools, "tool")) + ", sorted by " +
           std::string(sort_type_name(request.type)) + measure_text(request.measure.kind) +
           ends_text(request.ends, report.file_units);
}

std::string stopped_line(OrderType type) {
    return std::string("nmk order: stopped; ") +
           (stop_effect(type) == StopEffect::keeps_best
                ? "the best order so far is kept, and items of tools not yet ordered are in the "
                  "order of the file\n"
                : "items not yet ordered are in the order of the file\n");
}

std::string rapid_summary(const OrderReport& report) {
    const RapidMoves& rapids = report.request.measure.rapids;
    const OrderFigures& figures = report.figures;
    const auto seconds = [](const TravelFigures& travel) {
        return nmk_text::fixed_number(travel.seconds, 1) + " s";
    };
    return "Rapids at " + axes_text(rapids.rate) + " mm/min and " + axes_text(rapids.acceleration) +
           " mm/s2: " + seconds(figures.total.before) + " before, " + seconds(figures.total.after) +
           " after." +
           (report.request.measure.kind == nmkTravelMeasure::chebyshev
                ? " Travel is that of the longest axis (Chebyshev)."
                : "");
}

double shown_travel(const TravelFigures& figures, nmkTravelMeasure kind) {
    return kind == nmkTravelMeasure::chebyshev ? figures.per_axis : figures.travel;
}

}  // namespace nmk_order
