// local_filler.h: a filler over a vector, for the length of one call and without an allocation.
//
// Vector and LocalFiller must outlive every copy of the filler.
#pragma once

#include <ncamcontainer/coiIterators.h>

#include <memory>
#include <utility>
#include <vector>

namespace nmk_search {

template <class T>
class LocalFiller final : public coiAbsFiller<T> {
  public:
    explicit LocalFiller(std::vector<T>& values) : m_values(values) {}

    void add(T value) override { m_values.push_back(std::move(value)); }

    /// A filler that owns nothing.
    coiFiller<T> filler() {
        return coiFiller<T>(std::shared_ptr<coiAbsFiller<T>>(std::shared_ptr<void>(), this));
    }

  private:
    std::vector<T>& m_values;
};

}  // namespace nmk_search
