// order_command: `nmk order FILE`: orders the holes of a file and reports the travel saved.

#include "commands/order/order_command.h"

#include <nmkprogressbreak/nmkTerminalProgress.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>

#include "commands/order/avoided.h"
#include "commands/order/blocked_items.h"
#include "commands/order/job_notes.h"
#include "commands/order/order_files.h"
#include "commands/order/order_job.h"
#include "commands/order/order_json.h"
#include "commands/order/order_options.h"
#include "commands/order/order_outputs.h"
#include "commands/order/order_table.h"
#include "commands/order/sort_type_names.h"
#include "files/read_whole_file.h"
#include "formats/job/merge_tools.h"
#include "formats/job_files/read_job.h"
#include "shell/command_result.h"
#include "shell/standard_output.h"

namespace nmk_order {

namespace {

// From this number of items on, the tool announces that annealing takes long.
constexpr std::size_t many_items = 2000;

std::size_t largest_run(const nmk_job::MachiningJob& job, bool across_tools) {
    if (across_tools) {
        return job.items.size();
    }
    std::vector<std::size_t> counts(job.tools.size() + 1, 0);
    for (const nmk_job::JobItem& item : job.items) {
        ++counts[item.tool];
    }
    return *std::max_element(counts.begin(), counts.end());
}

/// The annealer tries a move for each item at 7,500 temperatures or more, and 7,500 more times at
/// the end.
void announce_long_work(const nmk_job::MachiningJob& job, const OrderRequest& request,
                        std::ostream& err) {
    const std::size_t items = largest_run(job, request.across_tools);
    if (anneals(request.type) && items >= many_items) {
        err << "nmk order: " << items << " items in one run: " << sort_type_name(request.type)
            << " tries at least " << items * 15000 / 1000000
            << " million moves; --type best is quicker and shorter\n";
    }
}

/// Prints at the first Ctrl-C what happens next.
void print_stop(OrderType type, const OrderRun& run, std::ostream& err) {
    switch (stop_effect(type)) {
        case StopEffect::keeps_done:
            err << "nmk order: stopping; items not yet ordered stay in the order of the file\n";
            break;
        case StopEffect::keeps_best:
            err << "nmk order: stopping; the best order so far is kept\n";
            break;
        case StopEffect::finishes:
            err << "nmk order: stopping when "
                << (run.name == "all" ? "this run" : nmk_text::line_text(run.name))
                << " is ordered; Ctrl-C again ends with nothing written\n";
            break;
    }
    err.flush();
}

void print_report(const OrderReport& report, const nmk_files::WrittenFiles& written,
                  std::ostream& out) {
    if (report.options.json) {
        out << order_json(report);
    } else if (!report.options.quiet) {
        out << order_table(report);
        nmk_shell::print_written(out, written);
    }
}

int ending(const OrderReport& report, const nmk_files::WrittenFiles& written, std::ostream& out,
           std::ostream& err) {
    const int code = nmk_shell::finish(out, err, "the figures", written);
    if (code == nmk_shell::done && report.stopped) {
        err << stopped_line(report.request.type);
    }
    return code;
}

int order_one(const OrderOptions& options, nmkProgressBreak* progress, bool announce,
              std::ostream& out, std::ostream& err) {
    const auto begin = OrderRequest::Clock::now();
    const auto avoided = read_avoided(options.avoid_file);
    if (!avoided) {
        return nmk_shell::refuse(err, avoided.error().text());
    }
    nmk_text::Result<nmk_job::MachiningJob> read =
        nmk_job_files::read_job_file(options.file_name, options.units, options.format);
    if (!read) {
        return nmk_shell::refuse(err, read.error().text());
    }
    auto& job = *read;
    if (job.items.empty() && !options.allow_empty) {
        nmk_shell::refuse(err, no_items_message(nmk_files::input_name(options.file_name)));
        return nmk_shell::no_result;
    }
    OrderRequest request = order_request(options, job.units, begin);
    request.ends.avoided = avoided_with(*avoided, request.measure);
    const Refusal refusal = avoid_keep_outs(job, request, options.skip_blocked);
    if (!refusal.text.empty()) {
        nmk_shell::refuse(err, refusal.text);
        return refusal.code;
    }
    if (const std::string problem = job_time_problem(job, options); !problem.empty()) {
        return nmk_shell::refuse(err, nmk_files::input_name(options.file_name) + ": " + problem);
    }
    if (options.merge_tools) {
        nmk_job::merge_tools(job);
    }
    if (announce) {
        announce_long_work(job, request, err);
    }
    const DebugDrawing drawing(options.debug_channel);
    const OrderedJob ordered = order_job(
        job, request, progress, [&](const OrderRun& run) { print_stop(request.type, run, err); });
    OrderReport report = report_of(options, request, job, ordered);
    if (!options.debug_svg_file.empty() && is_debug_drawing_empty(options.debug_channel)) {
        report.notes.push_back("nothing was drawn on the debug channel");
    }
    const auto outputs = order_outputs(job, ordered, report);
    if (!outputs) {
        return nmk_shell::refuse(err, outputs.error().text());
    }
    const auto written = nmk_shell::write_outputs(*outputs, out);
    if (!written) {
        return nmk_shell::refuse(err, written.error().text());
    }
    print_report(report, *written, nmk_shell::report_stream(*outputs, out, err));
    return ending(report, *written, out, err);
}

int order_with(const OrderOptions& options, nmkProgressBreak* progress, bool announce,
               std::ostream& out, std::ostream& err) {
    const bool is_one = options.files.size() == 1 && options.jobs == 1;
    return is_one ? order_one(options_of_file(options, options.files.front()), progress, announce,
                              out, err)
                  : order_files(options, progress, out, err);
}

int run_on_terminal(const OrderOptions& options, std::ostream& out, std::ostream& err) {
    // Draws on a terminal only, but handles Ctrl-C everywhere.
    nmkTerminalProgress progress(options.quiet ? nullptr : stderr);
    const bool announce = !options.quiet && isatty(STDERR_FILENO) == 1;
    return order_with(options, &progress, announce, out, err);
}

}  // namespace

int run_order(const OrderOptions& options, std::ostream& out, std::ostream& err,
              nmkProgressBreak* progress) {
    return order_with(options, progress, false, out, err);
}

nmk_shell::Run declare_order(nmk_shell::OptionTable& table) {
    return nmk_shell::declare_command<OrderOptions>(table, declare_order_options, run_on_terminal);
}

}  // namespace nmk_order
