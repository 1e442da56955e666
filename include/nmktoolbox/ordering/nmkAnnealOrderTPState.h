// nmkAnnealOrderTPState: toolpaths with tool axes, in the order of a cheap open path.
//
// A move takes one toolpath and slides it along the order. It never passes a toolpath of its own
// orientation out of sequence. Climbing and changing the tool axis cost extra.
//
// The paths are expected in runs of one orientation, each run in sequence.
#pragma once

#include <geometry/giUnitVec3.h>
#include <nmktoolbox/export.h>
#include <nmktoolbox/ordering/nmkAnnealItemOrientedTP.h>
#include <nmktoolbox/ordering/nmkAnnealOrderState.h>

#include <memory>
#include <vector>

class NMKTOOLBOX_EXPORT nmkAnnealOrderTPState : public nmkAnnealOrderState {
  public:
    /// Shares the toolpaths of `toolpaths`, which is copied.
    explicit nmkAnnealOrderTPState(
        const std::vector<std::shared_ptr<nmkAnnealItemOrientedTP>>& toolpaths);
    nmkAnnealOrderTPState(const nmkAnnealOrderTPState&) = default;

    const utTypeID& ut_dynamic_type() const override;
    int ut_is_kind_of(const utTypeID& type) const override;

    /// Interleaves the runs of the paths at random, keeping the sequence within each; returns the
    /// length. The last run always comes last.
    double randomise() override;
    void accept_new_state() override;

    /// Copies paths and configuration; a source of another kind changes nothing.
    nmkAnnealOrderTPState& operator=(const nmkAnnealState& other) override;
    nmkAnnealOrderTPState& operator=(const nmkAnnealOrderTPState& other);
    ~nmkAnnealOrderTPState() override;

    /// The cost of moving from one toolpath to another; not symmetric.
    double distance(int item_a, int item_b) override;

    /// The cost of changing the tool axis; 0.0 up to a right angle.
    static double axis_distance(const giUnitVec3& from, const giUnitVec3& to);

    static const utTypeID& ut_static_type();
    static nmkAnnealOrderTPState* ut_dynamic_cast(nmkAnnealState* state);
    static const nmkAnnealOrderTPState* ut_dynamic_cast(const nmkAnnealState* state);

  protected:
    /// Draws the position of a toolpath and the position that it slides to.
    void get_candidates(int& first, int& second) override;
    void update_candidate_distance() override;

    /// The last position between `first` and `second` to which the toolpath at `first` may move;
    /// `first` itself when it may not move.
    ///
    ///   direction  1 or -1, leading from `first` to `second`
    virtual int make_valid_candidate(int first, int second, int direction);

  private:
    const nmkAnnealItemOrientedTP& path_at(int position) const;
    const nmkAnnealItemOrientedTP& path(int item) const;
    std::vector<int> first_of_each_run() const;

    std::vector<std::shared_ptr<nmkAnnealItemOrientedTP>> paths;
    int move_direction = 0;
    int move_offset = 0;
};
