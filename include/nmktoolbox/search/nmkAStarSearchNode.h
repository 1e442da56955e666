// nmkAStarSearchNode.h: the search's own record around a node of the space.
#pragma once

#include <nmktoolbox/export.h>

#include <memory>

class nmkSearchGoal;
class nmkSearchNode;
namespace nmk_search {
class OpenList;
}

/// A node, the record that it was reached from, and the cost of the route through it.
///
/// g, the cost from the root, is fixed when the parent is chosen. h, the lower bound to the goal,
/// is computed again when the goal has moved. A chain of parents of any length is freed
/// without deep recursion.
class NMKTOOLBOX_EXPORT nmkAStarSearchNode {
  public:
    /// Scores `node` against `goal`. `parent` is empty for a root, whose g is 0.0.
    nmkAStarSearchNode(std::shared_ptr<const nmkSearchNode> node,
                       std::shared_ptr<const nmkAStarSearchNode> parent, const nmkSearchGoal& goal);
    nmkAStarSearchNode(const nmkAStarSearchNode&) = delete;
    nmkAStarSearchNode& operator=(const nmkAStarSearchNode&) = delete;
    virtual ~nmkAStarSearchNode();

    /// Computes h again.
    virtual void calculate_h(const nmkSearchGoal& goal);

    /// h + g, added at each call.
    double f() const { return m_h + m_g; }
    double h() const { return m_h; }
    std::shared_ptr<const nmkSearchNode> node() const { return m_node; }
    std::shared_ptr<const nmkAStarSearchNode> parent() const { return m_parent; }

  protected:
    /// Computes g again: 0.0 for a root, else the step from the parent plus the parent's g.
    virtual void calculate_g();
    virtual void set_h(double h);

  private:
    friend class nmkAStarSearch;
    friend class nmk_search::OpenList;

    void report_change() const;

    std::shared_ptr<const nmkSearchNode> m_node;
    std::shared_ptr<const nmkAStarSearchNode> m_parent;
    double m_g = 0.0;
    double m_h = 0.0;
    std::shared_ptr<bool> m_score_changed;  // flag of the open list that holds this record
};
