// order_report: everything that is reported of one run of `nmk order`.

#include "commands/order/order_report.h"

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

/// " from (0, 0) mm to (1, 2) mm"
std::string ends_text(const TravelEnds& ends, nmk_job::JobUnits units) {
    const std::string start = ends.start ? " from " + point_text(*ends.start, units) : "";
    return start + (ends.is_closed           ? ", back to the first item"
                    : !ends.end              ? ""
                    : ends.end == ends.start ? " and back"
                                             : " to " + point_text(*ends.end, units));
}

}  // namespace

OrderReport report_of(const OrderOptions& options, const OrderRequest& request,
                      const nmk_job::MachiningJob& job, const OrderedJob& ordered) {
    OrderReport report;
    report.options = options;
    report.options.file_name = nmk_files::input_name(options.file_name);
    report.request = request;
    report.file_units = job.units;
    report.figures = measure_order(job, ordered);
    report.tool_changes_before = ordered.tool_changes_before;
    report.tool_changes_after = ordered.tool_changes_after;
    report.stopped = ordered.stopped;
    report.notes = ordered.notes;
    const std::vector<std::string> of_job = job_notes(job);
    report.notes.insert(report.notes.end(), of_job.begin(), of_job.end());
    return report;
}

std::string report_summary(const OrderReport& report) {
    const OrderRequest& request = report.request;
    const std::size_t tools = report.figures.tools.size();
    return counted(report.figures.total.items, "item") + ", " +
           (request.across_tools ? "across tools" : counted(tools, "tool")) + ", sorted by " +
           std::string(sort_type_name(request.type)) + ends_text(request.ends, report.file_units);
}

std::string stopped_line(OrderType type) {
    return std::string("nmk order: stopped; ") +
           (stop_effect(type) == StopEffect::keeps_best
                ? "the best order so far is kept, and items of tools not yet ordered are in the "
                  "order of the file\n"
                : "items not yet ordered are in the order of the file\n");
}

std::string rapid_summary(const OrderReport& report) {
    const double rapid = report.options.rapid;
    const TravelFigures& before = report.figures.total.before;
    const TravelFigures& after = report.figures.total.after;
    const auto seconds = [&](double length) {
        return nmk_text::fixed_number(rapid_seconds(length, rapid), 1) + " s";
    };
    return "Rapids at " + nmk_text::short_number(rapid, 3) + " mm/min: straight (Euclidean) " +
           seconds(before.travel) + " before, " + seconds(after.travel) +
           " after; longest axis (Chebyshev) " + seconds(before.per_axis) + " before, " +
           seconds(after.per_axis) + " after.";
}

}  // namespace nmk_order
