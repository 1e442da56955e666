// whole_assignment.h: assignment between states that are known as some base class only.
//
// A state is copied by the virtual operator=(const nmkAnnealState&), so that an assignment through
// references to a base class copies the whole configuration. A caller's own override of it ends by
// calling the operator of its base class with a source of its own type, and C++ then picks the
// overload for that base class. The same overload is picked for two references to the base class,
// where the virtual operator has to be called. An assignment under way is therefore remembered:
// asked again for the same target, the overload copies the part of its own class only.
#pragma once

class nmkAnnealState;

namespace nmk_ordering {

/// Marks one state as being assigned to, on this thread, while it exists. Marks may be nested.
class AssignmentMark {
  public:
    explicit AssignmentMark(const nmkAnnealState& target) noexcept;
    ~AssignmentMark();
    AssignmentMark(const AssignmentMark&) = delete;
    AssignmentMark& operator=(const AssignmentMark&) = delete;

    /// Whether the innermost mark is on `target`.
    static bool is_on(const nmkAnnealState& target) noexcept;

  private:
    const nmkAnnealState* m_outer;
};

/// The assignment of two states of the static type State, whatever their dynamic types.
template <class State>
State& assign_whole(State& target, const State& source) {
    const nmkAnnealState& any = source;
    if (AssignmentMark::is_on(target)) {
        target.State::operator=(any);
    } else {
        const AssignmentMark mark(target);
        target = any;
    }
    return target;
}

}  // namespace nmk_ordering
