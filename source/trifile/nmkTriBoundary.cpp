#include <digiutils/ccAdjacency.h>
#include <geometry/giTriBlock.h>
#include <nmktoolbox/trifile/nmkTriBoundary.h>

#include <utility>

namespace {

constexpr int expected_calls = 10;

// Distance of corners at one place, in the unit of the model. At most this: they are one.
constexpr double default_tolerance = 1e-05;

// Degrees between planes that continue each other. At most this: neighbours first.
constexpr double default_angle = 20.0;

}  // namespace

const coCallReason nmkTriBoundaryCR_mod;

nmkTriBoundary::nmkTriBoundary(giTriBlock* block)
    : m_sender(expected_calls),
      m_receiver(expected_calls),
      m_source(nullptr),
      m_target(nullptr),
      m_tolerance(default_tolerance),
      m_angle(default_angle),
      m_method(nmkTriBoundaryBySize) {
    announce();
    take_blocks(block, block);
}

int nmkTriBoundary::set_triblock(giTriBlock* block, int create) {
    return set_triblock(block, block, create);
}

int nmkTriBoundary::set_triblock(const giTriBlock* source, giTriBlock* target, int create) {
    announce();
    take_blocks(source, target);
    if (source == nullptr || target == nullptr || create == 0) return 1;
    giTriArrcoFeature triangles;
    giNodeXYZ nodes;
    if (source->get(triangles) == 0 || source->get(nodes) == 0) return 1;
    giLinkArr::set_page_size(triangles->size());
    ccAdjacency adjacency(*source, *target, shares_by_index(nodes->size(), triangles->size()), 1,
                          m_angle);
    // Deliberate: what counts is whether there are links, not what the search reports.
    adjacency.create_adjacency(m_tolerance);
    announce();
    giLinkArrcoFeature links;
    return target->get(links) != 0 ? 0 : 1;
}

void nmkTriBoundary::set_angle(double angle) {
    m_angle = angle;
    delete_links();
}

void nmkTriBoundary::set_tolerance(double tolerance) {
    m_tolerance = tolerance;
    delete_links();
}

// Deliberate: unlike the angle and the tolerance, another method keeps the links that there are.
void nmkTriBoundary::set_boundary_method(nmkTriBoundaryMethod method) noexcept {
    m_method = method;
}

void nmkTriBoundary::delete_links() {
    giLinkArrcoFeature links;
    if (m_target != nullptr) m_target->remove(links);
}

int nmkTriBoundary::visit(Visitor fn, void* data) {
    giTriArrcoFeature triangles;
    giNodeXYZ nodes;
    giLinkArrcoFeature links;
    if (m_source == nullptr || m_target == nullptr || m_source->get(triangles) == 0 ||
        m_source->get(nodes) == 0) {
        return 0;
    }
    if (m_target->get(links) == 0 && set_triblock(m_source, m_target, 1) != 0) return 0;
    m_target->get(links);
    for (int i = 0; i < triangles->size(); ++i) {
        const giTriangle triangle = std::as_const(*triangles)[i];
        const giLink link = (*links)[i];
        for (int k = 0; k < 3; ++k) {
            if (link[k] != -1) continue;
            const giPoint3& from = (*nodes)[triangle[k]];
            const giPoint3& to = (*nodes)[triangle[(k + 1) % 3]];
            if (fn(from, to, data) != 0) return 1;
        }
    }
    return 0;
}

void nmkTriBoundary::listen_enabled(coSender* sender, coCallReason reason) {
    sender->call_list().add(
        new coCallFunc(&m_receiver, reason, nmkTriBoundarycofeature_modified1, this, 1));
}

void nmkTriBoundary::nmkTriBoundarycofeature_modified1(void* boundary, void* block) {
    static_cast<nmkTriBoundary*>(boundary)->cofeature_modified(block);
}

void nmkTriBoundary::cofeature_modified(void* block) {
    announce();
    auto* const changed = static_cast<giTriBlock*>(block);
    take_blocks(changed, changed);
}

void nmkTriBoundary::take_blocks(const giTriBlock* source, giTriBlock* target) {
    m_source = source;
    m_target = target;
    delete_links();
}

void nmkTriBoundary::announce() {
    if (m_sender.is_enabled()) m_sender.announce(nmkTriBoundaryCR_mod, nullptr);
}

// Whether corners are shared where their index is the same.
int nmkTriBoundary::shares_by_index(int nodes, int triangles) const noexcept {
    if (m_method != nmkTriBoundaryBySize) return m_method == nmkTriBoundaryByIndex ? 1 : 0;
    return std::int64_t{nodes} != std::int64_t{3} * triangles ? 1 : 0;
}
