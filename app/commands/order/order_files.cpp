// order_files: `nmk order` with several files, or with several workers.

#include "commands/order/order_files.h"

#include <nmkprogressbreak/nmkTerminalProgress.h>

#include <algorithm>
#include <deque>
#include <iterator>
#include <utility>
#include <vector>

#include "commands/order/avoided.h"
#include "commands/order/blocked_items.h"
#include "commands/order/files_table.h"
#include "commands/order/job_notes.h"
#include "commands/order/order_job.h"
#include "commands/order/order_json.h"
#include "commands/order/order_outputs.h"
#include "commands/order/order_table.h"
#include "commands/order/ordered_run_bytes.h"
#include "files/read_whole_file.h"
#include "formats/job/merge_tools.h"
#include "formats/job_files/read_job.h"
#include "shell/command_result.h"
#include "shell/standard_output.h"
#include "shell/worker_pool.h"

namespace nmk_order {

namespace {

// Smaller runs share a worker: to start one takes as long as to order some hundred items.
constexpr std::size_t min_items_of_a_task = 300;

/// One file on its way.
struct FileToOrder {
    OrderOptions options;
    nmk_job::MachiningJob job;
    OrderRequest request;
    OrderedJob ordered;            // in the order of the file until all runs are done
    std::vector<OrderedRun> runs;  // as far as they are done, the others in the order of the file
    std::string why_lost;          // a run that no worker brought back: nothing is written
};

struct RunOfFile {
    std::size_t file;
    std::size_t run;
    std::size_t items;
    double time_share = 1.0;  // of the time until the deadline, for its search
};

using Task = std::vector<RunOfFile>;

class FilesOrderer {
  public:
    FilesOrderer(const OrderOptions& options, nmkProgressBreak* progress, std::ostream& out,
                 std::ostream& err)
        : m_options(options), m_progress(progress), m_out(out), m_err(err) {}

    int run() {
        auto avoided = read_avoided(m_options.avoid_file);
        if (!avoided) {
            return nmk_shell::refuse(m_err, avoided.error().text());
        }
        m_avoided = *std::move(avoided);
        for (const std::string& file : m_options.files) {
            read(file);
        }
        order();
        for (FileToOrder& file : m_files) {
            write(file);
        }
        print();
        return code();
    }

  private:
    struct Problem {
        std::string text;
        int code;
    };

    void fail(const nmk_text::Error& error) {
        m_problems.push_back({error.text(), nmk_shell::bad_input});
    }

    void read(const std::string& name) {
        const OrderOptions options = options_of_file(m_options, name);
        auto job = nmk_job_files::read_job_file(name, options.units, options.format);
        if (!job) {
            fail(job.error());
            return;
        }
        if (job->items.empty() && !options.allow_empty) {
            m_problems.push_back(
                {no_items_message(nmk_files::input_name(name)), nmk_shell::no_result});
            return;
        }
        OrderRequest request = order_request(options, job->units, m_begin);
        request.ends.avoided = avoided_with(m_avoided, request.measure);
        const Refusal refusal = avoid_keep_outs(*job, request, options.skip_blocked);
        if (!refusal.text.empty()) {
            m_problems.push_back({refusal.text, refusal.code});
            return;
        }
        if (const std::string problem = job_time_problem(*job, options); !problem.empty()) {
            m_problems.push_back(
                {nmk_files::input_name(name) + ": " + problem, nmk_shell::bad_input});
            return;
        }
        if (options.merge_tools) {
            nmk_job::merge_tools(*job);
        }
        FileToOrder& file = m_files.emplace_back();
        file.options = options;
        file.job = *std::move(job);
        file.request = std::move(request);
        file.ordered = unordered_job(file.job, file.request);
        for (std::size_t run = 0; run < file.ordered.runs.size(); ++run) {
            file.runs.push_back(skipped_run(file.ordered, run));
        }
    }

    /// The runs of all files, the largest first, so that none of them is left for the end.
    std::vector<RunOfFile> all_runs() const {
        std::vector<RunOfFile> runs;
        for (std::size_t file = 0; file < m_files.size(); ++file) {
            const std::vector<OrderRun>& of_file = m_files[file].ordered.runs;
            for (std::size_t run = 0; run < of_file.size(); ++run) {
                runs.push_back({file, run, of_file[run].count});
            }
        }
        std::stable_sort(runs.begin(), runs.end(),
                         [](const RunOfFile& a, const RunOfFile& b) { return a.items > b.items; });
        share_time(runs);
        return runs;
    }

    /// The workers together take the runs one after the other, and share the time that is left
    /// among those that are still to be ordered.
    void share_time(std::vector<RunOfFile>& runs) const {
        double items_left = 0.0;
        for (auto run = runs.rbegin(); run != runs.rend(); ++run) {
            const auto items = static_cast<double>(run->items);
            items_left += items;
            run->time_share = std::min(items * m_options.jobs / items_left, 1.0);
        }
    }

    std::vector<Task> all_tasks() const {
        std::vector<Task> tasks;
        std::size_t items = min_items_of_a_task;  // of the last task
        for (const RunOfFile& run : all_runs()) {
            if (items >= min_items_of_a_task) {
                tasks.emplace_back();
                items = 0;
            }
            tasks.back().push_back(run);
            items += run.items;
        }
        return tasks;
    }

    void order() {
        const std::vector<Task> tasks = all_tasks();
        start_progress(tasks);
        nmk_shell::WorkerTasks work;
        work.count = tasks.size();
        work.work = [&](std::size_t task) { return ordered_runs(tasks[task]); };
        work.done = [&](std::size_t task, const nmk_text::Result<std::string>& result) {
            take(tasks[task], result);
        };
        work.goes_on = [&] { return !is_stopped(); };
        nmk_shell::run_in_workers(work, static_cast<std::size_t>(m_options.jobs));
        if (m_progress != nullptr) {
            m_progress->send_progress_bar_to_100();
        }
    }

    void start_progress(const std::vector<Task>& tasks) {
        std::size_t items = 0;
        for (const Task& task : tasks) {
            for (const RunOfFile& run : task) {
                items += run.items;
            }
        }
        if (m_progress != nullptr) {
            m_progress->send_progress_bar_to_0("Ordering");
            m_progress->set_range(static_cast<double>(items));
        }
    }

    /// Draws the progress, too.
    bool is_stopped() {
        const bool stops =
            m_progress != nullptr && m_progress->jump_to(static_cast<double>(m_items_done)) != 0;
        m_is_stopped = m_is_stopped || stops;
        return m_is_stopped;
    }

    /// What a worker does. It draws nothing, but sees a request to stop.
    std::string ordered_runs(const Task& task) const {
        nmkTerminalProgress silent(nullptr);
        std::vector<OrderedRun> runs;
        for (const RunOfFile& each : task) {
            const FileToOrder& file = m_files[each.file];
            runs.push_back(silent.is_stopped() ? skipped_run(file.ordered, each.run)
                                               : order_run(file.job, file.request, file.ordered,
                                                           each.run, &silent, each.time_share));
        }
        return bytes_of_runs(runs);
    }

    void take(const Task& task, const nmk_text::Result<std::string>& result) {
        std::vector<OrderedRun> runs = result ? runs_of_bytes(*result) : std::vector<OrderedRun>();
        for (std::size_t i = 0; i < task.size(); ++i) {
            FileToOrder& file = m_files[task[i].file];
            OrderedRun& run = file.runs[task[i].run];
            m_items_done += task[i].items;
            if (i < runs.size() && runs[i].after.size() == task[i].items) {
                run = std::move(runs[i]);
            } else {
                file.why_lost =
                    result ? std::string("its worker returned too little") : result.error().message;
            }
        }
    }

    void write(FileToOrder& file) {
        if (!file.why_lost.empty()) {
            const std::string name = nmk_files::input_name(file.options.file_name);
            return fail({name, 0, "no result: " + file.why_lost});
        }
        file.ordered = joined_job(file.job, std::move(file.ordered), file.runs);
        OrderReport report = report_of(file.options, file.request, file.job, file.ordered);
        const auto outputs = order_outputs(file.job, file.ordered, report);
        if (!outputs) {
            fail(outputs.error());
            return;
        }
        m_to_stream = m_to_stream || &nmk_shell::report_stream(*outputs, m_out, m_err) == &m_err;
        const auto written = nmk_shell::write_outputs(*outputs, m_out);
        if (!written) {
            fail(written.error());
            return;
        }
        append(m_written.names, written->names);
        append(m_written.new_names, written->new_names);
        m_reports.push_back(std::move(report));
    }

    static void append(std::vector<std::string>& all, const std::vector<std::string>& names) {
        all.insert(all.end(), names.begin(), names.end());
    }

    void print() {
        std::ostream& stream = m_to_stream ? m_err : m_out;
        const bool is_one = m_options.files.size() == 1;
        if (m_reports.empty() && is_one) {
            return;
        }
        if (m_options.json) {
            stream << (is_one ? order_json(m_reports.front()) : files_json(m_reports));
        } else if (!m_options.quiet) {
            stream << (is_one ? order_table(m_reports.front()) : files_table(m_reports));
            nmk_shell::print_written(stream, m_written);
        }
    }

    int code() {
        int code = nmk_shell::finish(m_out, m_err, "the figures", m_written);
        for (const Problem& problem : m_problems) {
            nmk_shell::refuse(m_err, problem.text);
            code = std::max(code, problem.code);
        }
        if (m_is_stopped && code == nmk_shell::done) {
            m_err << stopped_line(m_options.type);
        }
        return code;
    }

    const OrderOptions& m_options;
    const OrderRequest::Clock::time_point m_begin = OrderRequest::Clock::now();
    nmkProgressBreak* m_progress;
    std::ostream& m_out;
    std::ostream& m_err;
    std::shared_ptr<const Avoided> m_avoided;  // by all files
    std::deque<FileToOrder> m_files;
    std::vector<OrderReport> m_reports;
    std::vector<Problem> m_problems;
    nmk_files::WrittenFiles m_written;
    std::size_t m_items_done = 0;
    bool m_is_stopped = false;
    bool m_to_stream = false;
};

}  // namespace

int order_files(const OrderOptions& options, nmkProgressBreak* progress, std::ostream& out,
                std::ostream& err) {
    return FilesOrderer(options, progress, out, err).run();
}

}  // namespace nmk_order
