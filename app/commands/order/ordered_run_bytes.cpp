// ordered_run_bytes: ordered runs as bytes, on their way from a worker.
//
// A run is a line "STOPPED NOTES CUTS" with two more numbers for each cut, and a line for each
// note.

#include "commands/order/ordered_run_bytes.h"

#include <cstddef>
#include <cstdint>
#include <sstream>

namespace nmk_order {

namespace {

bool read_run(std::istream& in, OrderedRun& run) {
    std::size_t notes = 0;
    std::size_t cuts = 0;
    if (!(in >> run.stopped >> notes >> cuts)) {
        return false;
    }
    nmk_job::JobCut cut;
    for (std::size_t i = 0; i < cuts && in >> cut.item >> cut.reversed; ++i) {
        run.after.push_back(cut);
    }
    std::string note;
    std::getline(in, note);  // the rest of the line
    for (std::size_t i = 0; i < notes && std::getline(in, note); ++i) {
        run.notes.push_back(note);
    }
    return bool(in) && run.after.size() == cuts && run.notes.size() == notes;
}

}  // namespace

std::string bytes_of_runs(const std::vector<OrderedRun>& runs) {
    std::string bytes;
    for (const OrderedRun& run : runs) {
        bytes += run.stopped ? "1 " : "0 ";
        bytes += std::to_string(run.notes.size()) + " " + std::to_string(run.after.size()) + " ";
        for (const nmk_job::JobCut& cut : run.after) {
            bytes += std::to_string(cut.item);
            bytes += cut.reversed ? " 1 " : " 0 ";
        }
        bytes += "\n";
        for (const std::string& note : run.notes) {
            bytes += note + "\n";
        }
    }
    return bytes;
}

std::vector<OrderedRun> runs_of_bytes(const std::string& bytes) {
    std::istringstream in(bytes);
    std::vector<OrderedRun> runs;
    for (OrderedRun run; read_run(in, run); run = {}) {
        runs.push_back(run);
    }
    return runs;
}

}  // namespace nmk_order
