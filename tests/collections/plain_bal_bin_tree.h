// plain_bal_bin_tree.h: a plain implementation of the balanced tree, for comparison.
//
// It uses indices instead of pointers, keeps the path in a vector, and compares as the tree does:
// once on the way down, then again from the pivot downwards. A tree that makes the same comparisons
// for the same insertions has the same shape at every moment.
#pragma once

#include <cstdlib>
#include <functional>
#include <utility>
#include <vector>

class PlainBalBinTree {
  public:
    using Compare = std::function<int(int, int)>;

    explicit PlainBalBinTree(Compare compare) : m_compare(std::move(compare)) {}

    void add(int item) {
        m_nodes.push_back({item, {none, none}, 0});
        const int added = static_cast<int>(m_nodes.size()) - 1;
        if (m_root == none) {
            m_root = added;
            return;
        }
        const std::vector<int> path = path_to(item);
        at(path.back()).child[side_of(path.back(), item, false)] = added;
        const std::size_t pivot = pivot_of(path);
        for (std::size_t i = pivot; i < path.size(); ++i) m_compare(item, at(path[i]).item);
        settle(path, pivot);
    }

    /// The items from the largest to the smallest.
    std::vector<int> walk() const {
        std::vector<int> items;
        walk(m_root, items);
        return items;
    }

    int root_item() const { return at(m_root).item; }

    /// True when every node records the difference of the heights below it, which is at most 1.
    bool is_balanced() const { return height(m_root) >= 0; }

  private:
    static constexpr int none = -1;
    struct Node {
        int item;
        int child[2];  // 0 the left, 1 the right
        int balance;   // height of the left minus height of the right
    };

    Node& at(int node) { return m_nodes[static_cast<std::size_t>(node)]; }
    const Node& at(int node) const { return m_nodes[static_cast<std::size_t>(node)]; }

    int side_of(int node, int item, bool recorded = true) {
        if (recorded) m_sides.push_back(m_compare(item, at(node).item) < 0 ? 0 : 1);
        return m_sides.back();
    }

    std::vector<int> path_to(int item) {
        std::vector<int> path;
        for (int node = m_root; node != none;) {
            path.push_back(node);
            node = at(node).child[side_of(node, item)];
        }
        return path;
    }

    std::size_t pivot_of(const std::vector<int>& path) const {
        std::size_t pivot = 0;
        for (std::size_t i = 0; i < path.size(); ++i) {
            if (at(path[i]).balance != 0) pivot = i;
        }
        return pivot;
    }

    // Computes the balances again from the heights, and rotates at the pivot when needed.
    void settle(const std::vector<int>& path, std::size_t pivot) {
        for (const int node : path) at(node).balance = difference(node);
        if (std::abs(at(path[pivot]).balance) < 2) return;
        const int subtree = turned(path[pivot]);
        if (pivot == 0) {
            m_root = subtree;
        } else {
            Node& parent = at(path[pivot - 1]);
            parent.child[parent.child[0] == path[pivot] ? 0 : 1] = subtree;
        }
        for (Node& node : m_nodes) node.balance = difference(static_cast<int>(&node - &m_nodes[0]));
    }

    int turned(int pivot) {
        const int deep = at(pivot).balance > 0 ? 0 : 1;
        const int child = at(pivot).child[deep];
        const bool same_side = (at(child).balance > 0 ? 0 : 1) == deep;
        if (!same_side) at(pivot).child[deep] = rotated(child, 1 - deep);
        return rotated(pivot, deep);
    }

    // Makes the child on `side` the parent of `node`.
    int rotated(int node, int side) {
        const int up = at(node).child[side];
        at(node).child[side] = at(up).child[1 - side];
        at(up).child[1 - side] = node;
        return up;
    }

    int plain_height(int node) const {
        if (node == none) return 0;
        const int left = plain_height(at(node).child[0]);
        const int right = plain_height(at(node).child[1]);
        return 1 + (left > right ? left : right);
    }

    int difference(int node) const {
        return plain_height(at(node).child[0]) - plain_height(at(node).child[1]);
    }

    int height(int node) const {
        if (node == none) return 0;
        const int left = height(at(node).child[0]);
        const int right = height(at(node).child[1]);
        if (left < 0 || right < 0 || std::abs(left - right) > 1) return -1;
        return 1 + (left > right ? left : right);
    }

    void walk(int node, std::vector<int>& items) const {
        if (node == none) return;
        walk(at(node).child[1], items);
        items.push_back(at(node).item);
        walk(at(node).child[0], items);
    }

    Compare m_compare;
    std::vector<Node> m_nodes;
    std::vector<int> m_sides;
    int m_root = none;
};
