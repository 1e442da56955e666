// picture_fixtures.h: jobs, and their pictures and pages, for the tests of the drawings of `nmk
// order`.
#pragma once

#include <memory>
#include <random>
#include <string>

#include "commands/order/order_page.h"
#include "commands/order/order_picture.h"
#include "formats/job/machining_job.h"

namespace nmk_order {

/// So many tools that cut so many holes each, at places that the seed decides, on 300 by 200 mm.
inline nmk_job::MachiningJob random_job(std::size_t tools, std::size_t holes, unsigned seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> x(0.0, 300.0);
    std::uniform_real_distribution<double> y(0.0, 200.0);
    nmk_job::MachiningJob job;
    job.file_name = "random.drl";
    for (std::size_t tool = 0; tool < tools; ++tool) {
        job.tools.push_back({"T" + std::to_string(tool + 1), 0.4});
        for (std::size_t hole = 0; hole < holes; ++hole) {
            const double at_x = x(random);
            job.items.push_back(
                {{at_x, y(random), 0.0}, std::nullopt, static_cast<std::uint32_t>(tool)});
        }
    }
    return job;
}

/// The drawings of a job, ordered as in the file; the travel begins and ends anywhere.
class DrawnJob {
  public:
    explicit DrawnJob(nmk_job::MachiningJob job, bool across_tools = false, TravelEnds ends = {})
        : m_job(std::move(job)) {
        OrderRequest request;
        request.ends = ends;
        request.type = nmkSortTypeNone;
        request.across_tools = across_tools;
        m_ordered = order_job(m_job, request, nullptr);
        OrderOptions options;
        options.file_name = m_job.file_name;
        m_report = std::make_unique<OrderReport>(report_of(options, request, m_job, m_ordered));
    }

    std::string picture() const { return order_picture(m_job, m_ordered, *m_report); }
    std::string page() const { return order_page(m_job, m_ordered, *m_report); }
    const nmk_job::MachiningJob& job() const { return m_job; }

  private:
    nmk_job::MachiningJob m_job;
    OrderedJob m_ordered;
    std::unique_ptr<OrderReport> m_report;
};

}  // namespace nmk_order
