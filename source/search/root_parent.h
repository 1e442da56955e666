// root_parent.h: the placeholder that a verifier receives as the parent of a root.
//
// verify takes a reference, and a root has no parent to refer to.
#pragma once

#include <nmktoolbox/search/nmkSearchNode.h>

namespace nmk_search {

class RootParent final : public nmkSearchNode {
  public:
    double min_cost(const nmkSearchNode&) const override { return 0.0; }
    double min_cost(const nmkSearchGoal&) const override { return 0.0; }

    static const nmkSearchNode& instance() {
        static const RootParent placeholder;
        return placeholder;
    }

  private:
    bool is_equal(const nmkSearchNode&) const override { return false; }
};

}  // namespace nmk_search
