// root_parent.h: what a verifier is given for the parent of a root.
#pragma once

#include <nmktoolbox/search/nmkSearchNode.h>

namespace nmk_search {

class RootParent final : public nmkSearchNode {
  public:
    double min_cost(const nmkSearchNode&) const override { return 0.0; }
    double min_cost(const nmkSearchGoal&) const override { return 0.0; }

    static const nmkSearchNode& instance() {
        static const RootParent none;
        return none;
    }

  private:
    bool is_equal(const nmkSearchNode&) const override { return false; }
};

}  // namespace nmk_search
