// giBoxArrPoint3: an array of points with its box, which is found when it is first asked for.
//
// For one thread at a time, reading included.
#pragma once

#include <geometry/giBox3.h>
#include <geometry/giPoint3Arrays.h>

class giBoxArrPoint3 {
  public:
    /// Number of points.
    int size() const noexcept { return m_points.size(); }

    /// The point at `index`; an unset one outside the array.
    const giPoint3& operator[](int index) const { return m_points[index]; }

    /// Sets the point at `index`, which is at least 0; the array grows up to it with unset points.
    void set(int index, const giPoint3& point) {
        m_points[index] = point;
        m_is_box_stale = true;
    }

    /// Appends a point.
    void add(const giPoint3& point) { set(size(), point); }

    /// The box of all points; unset points are not left out, coordinates that are NaN are.
    const giBox3& box() const {
        if (m_is_box_stale) find_box();
        return m_box;
    }

    /// Releases memory that is not needed; non-zero when anything changed.
    int repaginate() { return m_points.repaginate(); }

    giPoint3coPageArr::ConstElementIterator begin() const noexcept { return m_points.begin(); }
    giPoint3coPageArr::ConstElementIterator end() const noexcept { return m_points.end(); }

  private:
    void find_box() const {
        m_box = giBox3();
        for (const giPoint3& point : m_points) m_box.add(point);
        m_is_box_stale = false;
    }

    giPoint3coPageArr m_points;
    mutable giBox3 m_box;
    mutable bool m_is_box_stale = false;
};
