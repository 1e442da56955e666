// nmkAnnealStatePoints: points in the order of a short open path.
//
// Moves and length are those of nmkAnnealOrderState; distances are three-dimensional.
#pragma once

#include <geometry/giPoint3Arrays.h>
#include <nmktoolbox/export.h>
#include <nmktoolbox/ordering/nmkAnnealOrderState.h>

class NMKTOOLBOX_EXPORT nmkAnnealStatePoints : public nmkAnnealOrderState {
  public:
    /// `array` is borrowed, indexed by item, and only read; two states may share it.
    explicit nmkAnnealStatePoints(const giPoint3coPageArr* array);
    nmkAnnealStatePoints(const nmkAnnealStatePoints&) = default;

    const utTypeID& ut_dynamic_type() const override;
    int ut_is_kind_of(const utTypeID& type) const override;
    nmkAnnealState& operator=(const nmkAnnealState& other) override;
    nmkAnnealStatePoints& operator=(const nmkAnnealStatePoints& other);
    ~nmkAnnealStatePoints() override;

    /// The three-dimensional distance between two points.
    double distance(int item_a, int item_b) override;

    static const utTypeID& ut_static_type();
    static nmkAnnealStatePoints* ut_dynamic_cast(nmkAnnealState* state);
    static const nmkAnnealStatePoints* ut_dynamic_cast(const nmkAnnealState* state);

  private:
    friend class nmk_ordering::FlatAccess;

    const giPoint3coPageArr* points;
};
