// nmkAnnealStateNonReversible: lines that may be cut in one direction only, in the order of a short
// open path or closed tour.
//
// A move exchanges two equally long blocks of positions, which keeps the direction of every line.
// Two to nine lines are solved exactly by initialise and never annealed. Distances are measured in
// the plan view: z is ignored.
#pragma once

#include <geometry/giPoint3Arrays.h>
#include <nmktoolbox/export.h>
#include <nmktoolbox/ordering/nmkAnnealOrderState.h>

class NMKTOOLBOX_EXPORT nmkAnnealStateNonReversible : public nmkAnnealOrderState {
  public:
    /// Both arrays are borrowed, indexed by item, and only read; two states may share them.
    ///
    ///   is_closed  non-zero for a tour that returns to the first line
    nmkAnnealStateNonReversible(const giPoint3coPageArr& starts, const giPoint3coPageArr& ends,
                                int is_closed);
    nmkAnnealStateNonReversible(const nmkAnnealStateNonReversible&) = default;

    const utTypeID& ut_dynamic_type() const override;
    int ut_is_kind_of(const utTypeID& type) const override;

    /// Solves two to nine lines exactly and returns -1.0; else as nmkAnnealOrderState.
    ///
    /// Draws the lines when the debug channel "nmkAnnealStateNonReversible" is on at level 1.
    double initialise() override;
    void accept_new_state() override;

    /// Copies order, length and pending positions, but neither `closed` nor the block length.
    ///
    /// A source of another kind changes nothing.
    nmkAnnealState& operator=(const nmkAnnealState& other) override;
    nmkAnnealStateNonReversible& operator=(const nmkAnnealStateNonReversible& other);
    ~nmkAnnealStateNonReversible() override;

    /// From the end of `item_a` to the start of `item_b`, in the plan view.
    double distance(int item_a, int item_b) override;

    /// The length of the open path, plus that of the edge from last to first of a closed tour.
    double total_distance() override;

    static const utTypeID& ut_static_type();
    static nmkAnnealStateNonReversible* ut_dynamic_cast(nmkAnnealState* state);
    static const nmkAnnealStateNonReversible* ut_dynamic_cast(const nmkAnnealState* state);

  protected:
    /// Draws two positions, `first` below `second`.
    void get_candidates(int& first, int& second) override;

    /// Draws the length of the blocks too.
    void update_candidate_distance() override;

  private:
    friend class nmk_ordering::FlatAccess;

    void draw_lines_before_ordering() const;
    void solve_exactly();
    void permute(int k, double length, intcoFixedArr& best, intcoFixedArr& work,
                 const doublecoDynArr& table);

    int swap_length = -1;
    const giPoint3coPageArr* start_points;
    const giPoint3coPageArr* end_points;
    int closed;
};
