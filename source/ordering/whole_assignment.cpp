#include "ordering/whole_assignment.h"

namespace nmk_ordering {
namespace {

thread_local const nmkAnnealState* assigned_now = nullptr;

}  // namespace

AssignmentMark::AssignmentMark(const nmkAnnealState& target) noexcept : m_outer(assigned_now) {
    assigned_now = &target;
}

AssignmentMark::~AssignmentMark() { assigned_now = m_outer; }

bool AssignmentMark::is_on(const nmkAnnealState& target) noexcept {
    return assigned_now == &target;
}

}  // namespace nmk_ordering
