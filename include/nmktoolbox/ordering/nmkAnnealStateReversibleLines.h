// nmkAnnealStateReversibleLines: lines that may be cut in either direction, in the order of a short
// closed tour.
//
// A move reverses a span of positions, which may wrap past the end, and the direction of every line
// in it. A span of one line is a legal move, so reversing a single line needs no move of its own.
#pragma once

#include <geometry/giPoint3Arrays.h>
#include <nmktoolbox/export.h>
#include <nmktoolbox/ordering/nmkAnnealOrderState.h>

class NMKTOOLBOX_EXPORT nmkAnnealStateReversibleLines : public nmkAnnealOrderState {
  public:
    /// Both arrays are borrowed, indexed by item, and only read; two states may share them.
    nmkAnnealStateReversibleLines(const giPoint3coPageArr& starts, const giPoint3coPageArr& ends);
    nmkAnnealStateReversibleLines(const nmkAnnealStateReversibleLines&) = default;

    const utTypeID& ut_dynamic_type() const override;
    int ut_is_kind_of(const utTypeID& type) const override;
    void accept_new_state() override;

    /// Copies the configuration; a source of another kind changes nothing.
    nmkAnnealState& operator=(const nmkAnnealState& other) override;
    nmkAnnealStateReversibleLines& operator=(const nmkAnnealStateReversibleLines& other);
    ~nmkAnnealStateReversibleLines() override;

    /// From the exit of `item_a` to the entry of `item_b`, in their present directions.
    double distance(int item_a, int item_b) override;

    /// The length of the closed tour.
    double total_distance() override;

    /// Whether each line is cut backwards: out[position], by position like the result of get_items.
    void get_reverse_flags(intcoFixedArr& out) const;

    static const utTypeID& ut_static_type();
    static nmkAnnealStateReversibleLines* ut_dynamic_cast(nmkAnnealState* state);
    static const nmkAnnealStateReversibleLines* ut_dynamic_cast(const nmkAnnealState* state);

  protected:
    int num_item_states(int item) override;
    void switch_item_to_state(int item, int state) override;

    /// Draws two different positions; `first` may be above `second`.
    void get_candidates(int& first, int& second) override;
    void update_candidate_distance() override;

    /// Non-zero where lines may be reversed; 1 here.
    virtual int reversible() const;

    /// Reverses the line at `position`.
    virtual void reverse(int position);

    /// Non-zero if the line at `position` is cut backwards.
    virtual int reversed(int position) const;

    /// Where `item` is entered in its present direction.
    const giPoint3& start_point(int item) const;

    /// Where `item` is left in its present direction.
    const giPoint3& end_point(int item) const;

  private:
    friend class nmk_ordering::FlatAccess;

    const giPoint3coPageArr* start_points;
    const giPoint3coPageArr* end_points;
    intcoFixedArr reverse_flags;  // by item number
};
