// nmkBalBinTree: a height-balanced search tree of pointers that is read once, in order.
//
// It is built by insertion and can be searched; the first `top` turns it in place into a list from
// the largest item to the smallest, without further memory, and from then on it can only be read in
// that order. For ascending order, pass a comparison with the opposite sign.
//
// Items belong to the caller. Links come from a block allocator that several trees may share; they
// are never freed one by one: the memory is released with the last handle to the allocator. A tree
// is for one thread at a time, and no two trees may be flattened at once, because the variables
// that flattening uses are shared by all trees.
#pragma once

#include <falloc/fbaAllocator.h>
#include <nmktoolbox/export.h>

#include <cstdint>

/// A node of the tree, or a link of the list.
struct nmkBalBinTreeLink {
    nmkBalBinTreeLink* left;   // left child; in the list the next link
    nmkBalBinTreeLink* right;  // right child; in the list the previous link
    const void* item;
    std::int32_t balance;  // +1: the left side is deeper; -1: the right side is; else 0
};

class NMKTOOLBOX_EXPORT nmkBalBinTree {
  public:
    /// Three-way comparison; only the sign of the result is used. It is called more than once for
    /// the same pair, so it must be cheap and return the same sign each time.
    using Compare = int (*)(const void*, const void*);

    /// An empty tree; it makes its own allocator at the first insertion.
    explicit nmkBalBinTree(Compare compare) noexcept;

    /// An empty tree that takes its links from `allocator`, whose blocks must be large enough for a
    /// link. With a null handle it makes its own allocator at the first insertion.
    nmkBalBinTree(Compare compare, fbaAllocatorcoPrf& allocator) noexcept;

    nmkBalBinTree(const nmkBalBinTree&) = delete;
    nmkBalBinTree& operator=(const nmkBalBinTree&) = delete;
    ~nmkBalBinTree();

    /// Inserts an item, which is compared as compare(item, item in the tree). Items that compare
    /// equal are all kept. Calling it on a flattened tree is a programming error: it is reported to
    /// the assertion service, and nothing is added.
    void add(const void* item);

    /// The item in the tree that compares equal, the nearest to the root of several, or null. On a
    /// flattened tree the error is reported as for add, and the result is null.
    const void* exist(const void* item);

    /// Flattens the tree if it is not flat yet, moves to the first link and returns its item, the
    /// largest. Returns null for an empty tree, which is not flattened.
    const void* top() const;

    /// Moves to the next smaller item and returns it; null at the end, and from then on.
    const void* next() const;

    /// A new allocator of blocks for links, with `blocks` of them in a page, for trees to share.
    static fbaAllocatorcoPrf get_allocator(int blocks);

  private:
    struct Path;

    Path find_place(const void* item) const;
    int mark_path(const Path& path, const nmkBalBinTreeLink* added);
    void rebalance(const Path& path, int side);
    static nmkBalBinTreeLink* turn_once(nmkBalBinTreeLink* pivot, int side);
    static nmkBalBinTreeLink* turn_twice(nmkBalBinTreeLink* pivot, int side);

    void breaktree() const;
    static void list(nmkBalBinTreeLink* node);
    nmkBalBinTreeLink* makelink(const void* item);
    static void rotleft(nmkBalBinTreeLink*& node);
    static void rotright(nmkBalBinTreeLink*& node);

    static nmkBalBinTreeLink* treehead;
    static nmkBalBinTreeLink* treelast;

    mutable nmkBalBinTreeLink* m_root = nullptr;    // head of the list once flattened
    mutable nmkBalBinTreeLink* m_cursor = nullptr;  // the link that was read last
    mutable std::int32_t m_tree_state = 1;          // 1 while it is a tree, 0 once flattened
    fbaAllocatorcoPrf m_allocator;                  // may be null until the first insertion
    Compare m_compare;
};
