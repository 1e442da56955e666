// order_command: `nmk order FILE`: reads holes, orders them, tells what was saved, writes them.

#include "commands/order/order_command.h"

#include <nmkprogressbreak/nmkTerminalProgress.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>

#include "commands/order/order_figures.h"
#include "commands/order/order_job.h"
#include "commands/order/order_json.h"
#include "commands/order/order_options.h"
#include "commands/order/order_outputs.h"
#include "commands/order/order_table.h"
#include "commands/order/sort_type_names.h"
#include "formats/job_files/read_job.h"
#include "shell/command_result.h"

namespace nmk_order {

namespace {

// From here on annealing takes long enough to say so.
constexpr std::size_t many_items = 2000;

bool anneals(nmkSortType type) {
    return type == nmkSortTypeShortest || type == nmkSortTypeShortestOneWay;
}

std::size_t largest_run(const nmk_job::MachiningJob& job, bool across_tools) {
    std::size_t largest = 0;
    std::size_t sum = 0;
    for (const nmk_job::JobTool& tool : job.tools) {
        sum += tool.items.size();
        largest = std::max(largest, tool.items.size());
    }
    return across_tools ? sum : largest;
}

/// The annealer tries a move for each item at 7,500 temperatures at least, and 7,500 times more at
/// the end.
void announce_long_work(const nmk_job::MachiningJob& job, const OrderRequest& request,
                        std::ostream& err) {
    const std::size_t items = largest_run(job, request.across_tools);
    if (anneals(request.type) && items >= many_items) {
        err << "nmk order: " << items << " items in one run: " << sort_type_name(request.type)
            << " tries at least " << items * 15000 / 1000000
            << " million moves; --type closest is quicker\n";
    }
}

OrderReport report_of(const OrderOptions& options, const OrderRequest& request,
                      const OrderedJob& ordered) {
    OrderReport report;
    report.options = options;
    report.request = request;
    report.figures = measure_order(ordered.before, ordered.after);
    report.tool_changes_before = ordered.tool_changes_before;
    report.tool_changes_after = ordered.tool_changes_after;
    report.stopped = ordered.stopped;
    report.notes = ordered.notes;
    return report;
}

int print_report(const OrderReport& report, const nmk_files::WrittenFiles& written,
                 std::ostream& out, std::ostream& err) {
    if (report.options.json) {
        out << order_json(report);
    } else if (!report.options.quiet) {
        out << order_table(report);
        nmk_shell::print_written(out, written);
    }
    const int answer = nmk_shell::finish(out, err, "the figures", written);
    if (answer == nmk_shell::done && report.stopped) {
        err << "nmk order: stopped; what was not yet ordered stands as in the file\n";
    }
    return answer;
}

int order_with(const OrderOptions& options, nmkProgressBreak* progress, bool tell,
               std::ostream& out, std::ostream& err) {
    const nmk_text::Result<nmk_job::MachiningJob> read =
        nmk_job_files::read_job_file(options.file_name, options.units);
    if (!read) {
        return nmk_shell::refuse(err, read.error().text());
    }
    const auto& job = *read;
    const OrderRequest request = order_request(options, job.units);
    if (tell) {
        announce_long_work(job, request, err);
    }
    const DebugDrawing drawing(options.debug_channel);
    OrderedJob ordered = order_job(job, request, progress);
    if (!options.debug_svg_file.empty() && is_debug_drawing_empty(options.debug_channel)) {
        ordered.notes.push_back("nothing was drawn on the debug channel");
    }
    const OrderReport report = report_of(options, request, ordered);
    const auto written = write_order_outputs(job, ordered, report);
    if (!written) {
        return nmk_shell::refuse(err, written.error().text());
    }
    return print_report(report, *written, out, err);
}

}  // namespace

int run_order(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err,
              nmkProgressBreak* progress) {
    return nmk_shell::run_with(read_order_options(arguments), "order", err,
                               [&](const OrderOptions& options) {
                                   return order_with(options, progress, false, out, err);
                               });
}

int run_order(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
    return nmk_shell::run_with(read_order_options(arguments), "order", err,
                               [&](const OrderOptions& options) {
                                   // Draws on a terminal only, but answers Ctrl-C everywhere.
                                   nmkTerminalProgress progress(options.quiet ? nullptr : stderr);
                                   const bool tell = !options.quiet && isatty(STDERR_FILENO) == 1;
                                   return order_with(options, &progress, tell, out, err);
                               });
}

}  // namespace nmk_order
