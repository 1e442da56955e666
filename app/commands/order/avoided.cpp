// avoided: the keep-outs that the travel avoids.

#include "commands/order/avoided.h"

#include <utility>

#include "files/base_name.h"
#include "files/read_whole_file.h"

namespace nmk_order {

namespace {

nmkTravelProblem problem_of(const std::vector<nmk_keep_outs::KeepOut>& keep_outs,
                            const TravelMeasure& measure) {
    nmkTravelProblem problem = empty_problem(measure);
    for (const nmk_keep_outs::KeepOut& keep_out : keep_outs) {
        problem.keep_outs.push_back(keep_out.shape);
    }
    return problem;
}

}  // namespace

Avoided::Avoided(std::string file_name, std::vector<nmk_keep_outs::KeepOut> keep_outs,
                 const TravelMeasure& measure)
    : m_file_name(std::move(file_name)),
      m_keep_outs(std::move(keep_outs)),
      m_problem(problem_of(m_keep_outs, measure)),
      m_ways(m_problem) {}

std::string Avoided::name(int keep_out) const {
    const std::size_t line = m_keep_outs[static_cast<std::size_t>(keep_out)].line;
    return nmk_files::base_name(m_file_name) + ":" + std::to_string(line);
}

nmk_text::Result<std::shared_ptr<const Avoided>> read_avoided(const std::string& file_name) {
    if (file_name.empty()) {
        return std::shared_ptr<const Avoided>();
    }
    const auto text = nmk_files::read_input(file_name);
    if (!text) {
        return text.error();
    }
    const std::string name = nmk_files::input_name(file_name);
    if (const auto checked = nmk_files::check_text_file(name, *text); !checked) {
        return checked.error();
    }
    auto read = nmk_keep_outs::read_keep_outs(name, *text);
    if (!read) {
        return read.error();
    }
    return std::shared_ptr<const Avoided>(std::make_shared<Avoided>(name, *std::move(read)));
}

std::shared_ptr<const Avoided> avoided_with(const std::shared_ptr<const Avoided>& avoided,
                                            const TravelMeasure& measure) {
    const bool is_as_read = avoided == nullptr || measure.kind == nmkTravelMeasure::length;
    return is_as_read ? avoided
                      : std::make_shared<const Avoided>(avoided->file_name(), avoided->keep_outs(),
                                                        measure);
}

}  // namespace nmk_order
