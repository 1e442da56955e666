// coFeaturePool: an object made of features, at most one of each class.
//
// The pool owns the data of its features; a feature object that was bound to them must not be used
// after they have been removed. A pool has a handful of features, which are looked for one by one.
#pragma once

#include <ncamcontainer/basecoFeature.h>
#include <utils/utCopy.h>

#include <memory>
#include <vector>

class UT_EXPORT coFeaturePool {
  public:
    coFeaturePool() = default;
    coFeaturePool(utCopy, const coFeaturePool& other) { become(utCopy(), other); }
    coFeaturePool(const coFeaturePool&) = delete;
    coFeaturePool& operator=(const coFeaturePool&) = delete;
    virtual ~coFeaturePool();

    /// Replaces the features by copies of those of `other`.
    void become(utCopy, const coFeaturePool& other);

    /// Binds `feature` to the pool's data and returns 1; where the pool lacks that feature, unbinds
    /// it and returns 0.
    int get(basecoFeature& feature) const;

    /// The same, but where the pool lacks the feature it is added with default-constructed data.
    /// Returns 1 where it was added, 0 where the pool had it.
    int add(basecoFeature& feature);

    /// Removes the pool's data of that class, and unbinds `feature`. Returns 1, or 0 where there
    /// were none.
    int remove(basecoFeature& feature);

    /// Number of features.
    int size() const noexcept { return static_cast<int>(m_features.size()); }

  private:
    const basecoFeature* find(const coFeatureID& id) const noexcept;

    std::vector<std::unique_ptr<basecoFeature>> m_features;  // in the order of adding
};
