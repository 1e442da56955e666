// plain_unduplicator.h: nodes found again by an ordered set of points.
#pragma once

#include <nmktoolbox/curves/nmkgiPoint3Set.h>

#include <cmath>
#include <deque>

namespace plain {

class Unduplicator {
  public:
    long long node_index(const giPoint3& point, long long index) {
        // NaN has no place in an order; such a corner is always new.
        if (std::isnan(point.x) || std::isnan(point.y) || std::isnan(point.z)) return index;
        m_records.push_back({point, index});
        const giPoint3* const known = m_set.add(&m_records.back().place);
        // The place is the first member of its record.
        return reinterpret_cast<const Record*>(known)->index;
    }

  private:
    struct Record {
        giPoint3 place;
        long long index;
    };

    nmkgiPoint3Set m_set;
    std::deque<Record> m_records;
};

}  // namespace plain
