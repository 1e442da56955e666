// nmkSortItemWithPoint: an item with one point.
//
// Beside its point it keeps what the elastic ring of nmkItemSorterShortest needs: the point scaled
// into the unit box, and one weight for each point of the ring. These are allocated on first use,
// since most items are never sorted by a ring. All of it uses x and y only; z is carried along.
#pragma once

#include <geometry/giPoint3.h>
#include <geometry/giPoint3Arrays.h>
#include <ncamcontainer/builtin_containers.h>
#include <nmktoolbox/ordering/nmkSortItem.h>

#include <memory>

namespace nmk_ordering {
class RingPuller;
}

/// An item with one point. A caller's own item only has to define get_point.
class NMKTOOLBOX_EXPORT nmkSortItemWithPoint : public nmkSortItem {
  public:
    nmkSortItemWithPoint();
    nmkSortItemWithPoint(const nmkSortItemWithPoint& other);
    nmkSortItemWithPoint& operator=(const nmkSortItemWithPoint& other);

    CRuntimeClass* GetRuntimeClass() const override;
    ~nmkSortItemWithPoint() override;
    const utTypeID& ut_dynamic_type() const override;
    int ut_is_kind_of(const utTypeID& type) const override;

    /// The point of the item. It must not change while a sort runs.
    virtual const giPoint3& get_point() const = 0;

    /// How far ring point `ring_index` is pulled towards this item: the plan difference times the
    /// item's weight for that ring point, over the sum of its weights. Call set_distance_array
    /// first; ring_index counts from 0.
    virtual void get_weighted_distance(double& dx, double& dy, int ring_index,
                                       giPoint3& ring_point) const;

    /// Sets the weight of every ring point: exp(-d2 / 2kk) of the squared plan distance d2, and 0.0
    /// where d2 is 2 or more.
    ///
    ///   ring     the ring's points, in the unit box
    ///   k        width of the bell curve, above 0
    ///   returns  the least squared plan distance; the largest double for an empty ring
    virtual double set_distance_array(giPoint3coDynArr& ring, double k);

    /// Position of the ring point nearest in plan, the lowest of equals; 0 for an empty ring.
    virtual int get_closest(giPoint3coDynArr& ring) const;

    /// Sets the normal point: the item's point less (x0, y0), over scale. A scale of 0 or less
    /// leaves the point as it is, and z is never scaled.
    virtual void transform_point(double scale, double x0, double y0);

    static CRuntimeClass* GetThisClass();
    static CRuntimeClass* _GetBaseClass();
    static const utTypeID& ut_static_type();
    static nmkSortItemWithPoint* ut_dynamic_cast(nmkSortItem* item);
    static const nmkSortItemWithPoint* ut_dynamic_cast(const nmkSortItem* item);

  protected:
    /// The item's data for the elastic ring.
    struct RingPart {
        giPoint3 normal_point;   // after transform_point
        doublecoDynArr weights;  // one for each ring point
        double weight_sum = 0.0;
    };

    /// Allocated on first use, with an unset normal point and no weights.
    RingPart& ring_part();
    /// The same for reading; nothing is allocated.
    const RingPart& ring_part() const;

    giPoint3 point;  // returned by nmkSortItemLine::get_point

  private:
    friend class nmk_ordering::RingPuller;  // computes the weights of all items in one pass

    std::unique_ptr<RingPart> m_ring_part;
};
