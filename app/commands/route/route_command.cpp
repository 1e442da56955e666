// route_command: `nmk route FILE`: finds a short route across a plane with blocked cells.

#include "commands/route/route_command.h"

#include <nmkprogressbreak/nmkTerminalProgress.h>

#include <cstdio>

#include "commands/route/find_route.h"
#include "commands/route/read_plane.h"
#include "commands/route/route_options.h"
#include "commands/route/route_page.h"
#include "commands/route/route_picture.h"
#include "commands/route/route_report.h"
#include "files/read_whole_file.h"
#include "files/write_all_files.h"
#include "shell/command_result.h"
#include "shell/standard_output.h"

namespace nmk_route {

namespace {

RouteRequest request_of(const RouteOptions& options, const nmk_lattice::RoutePlane& plane) {
    RouteRequest request;
    request.start = *options.start;
    request.goal = *options.goal;
    request.kind = options.kind;
    request.gradient = options.gradient.value_or(0.0);
    request.forward = options.forward;
    request.cut_corners = options.cut_corners.value_or(!plane.is_map);
    return request;
}

std::vector<nmk_files::OutputFile> outputs(const RouteReport& report) {
    std::vector<nmk_files::OutputFile> files;
    const RouteOptions& options = report.options;
    if (!options.csv_file.empty()) {
        files.push_back({options.csv_file, route_csv(report)});
    }
    if (!options.svg_file.empty()) {
        files.push_back({options.svg_file, route_picture(report)});
    }
    if (!options.html_file.empty()) {
        files.push_back({options.html_file, route_page(report)});
    }
    return files;
}

void print_report(const RouteReport& report, const nmk_files::WrittenFiles& written,
                  std::ostream& out) {
    if (report.options.json) {
        out << route_json(report);
    } else if (!report.options.quiet) {
        out << route_text(report);
        nmk_shell::print_written(out, written);
    }
}

int ending(const RouteReport& report, const nmk_files::WrittenFiles& written, std::ostream& out,
           std::ostream& err) {
    const int code = nmk_shell::finish(out, err, "the route", written);
    if (code == nmk_shell::done && !report.route.is_found()) {
        err << "nmk route: " << no_route_line(report) << "\n";
        return nmk_shell::no_result;
    }
    return code;
}

int route_with(const RouteOptions& options, nmkProgressBreak* progress, std::ostream& out,
               std::ostream& err) {
    nmk_text::Result<PlaneOfFile> read = read_plane_file(options);
    if (!read) {
        return nmk_shell::refuse(err, read.error().text());
    }
    const auto& file = *read;
    const RouteRequest request = request_of(options, file.plane);
    if (const std::string problem = check_request(file.plane, request); !problem.empty()) {
        return nmk_shell::refuse(err, nmk_files::input_name(options.file_name) + ": " + problem);
    }
    const FoundRoute route = find_route(file.plane, request, progress);
    if (route.stopped) {
        err << "nmk route: stopped after " << route.closed.size() << " cells; no route was found\n";
        return nmk_shell::no_result;
    }
    RouteOptions shown = options;
    shown.file_name = nmk_files::input_name(options.file_name);
    const RouteReport report{shown, request, file.plane, route, file.notes};
    const std::vector<nmk_files::OutputFile> files = outputs(report);
    const auto written = nmk_shell::write_outputs(files, out);
    if (!written) {
        return nmk_shell::refuse(err, written.error().text());
    }
    print_report(report, *written, nmk_shell::report_stream(files, out, err));
    return ending(report, *written, out, err);
}

int run_on_terminal(const RouteOptions& options, std::ostream& out, std::ostream& err) {
    // Draws on a terminal only, but handles Ctrl-C everywhere.
    nmkTerminalProgress progress(options.quiet ? nullptr : stderr);
    return route_with(options, &progress, out, err);
}

}  // namespace

int run_route(const RouteOptions& options, std::ostream& out, std::ostream& err,
              nmkProgressBreak* progress) {
    return route_with(options, progress, out, err);
}

nmk_shell::Run declare_route(nmk_shell::OptionTable& table) {
    return nmk_shell::declare_command<RouteOptions>(table, declare_route_options, run_on_terminal);
}

}  // namespace nmk_route
