// nmkBalBinTree: a height-balanced search tree of pointers that is read once, in order.
//
// It is built by insertion and searched; the first `top` turns it in place into a list from the
// largest item to the smallest, at no cost of memory, and from then on it can only be walked. A
// caller who wants ascending order compares the other way round.
//
// Items are the caller's. Links come from a block allocator that several trees may share; they are
// never given back one by one, the memory goes with the last holder of the allocator. A tree is for
// one thread at a time, and no two trees may be flattened at once: the work variables of that are
// shared by all.
#pragma once

#include <falloc/fbaAllocator.h>
#include <nmktoolbox/export.h>

#include <cstdint>

/// One node of the tree, or link of the list.
struct nmkBalBinTreeLink {
    nmkBalBinTreeLink* left;   // left child; in the list the next link
    nmkBalBinTreeLink* right;  // right child; in the list the previous link
    const void* item;
    std::int32_t balance;  // +1 where the left side is deeper, -1 where the right side is, else 0
};

class NMKTOOLBOX_EXPORT nmkBalBinTree {
  public:
    /// Three-way comparison; only the sign of the answer counts. Called more than once for the same
    /// pair, so it must be cheap and give the same answer each time.
    using Compare = int (*)(const void*, const void*);

    /// Empty; an allocator of its own is made at the first insertion.
    explicit nmkBalBinTree(Compare compare) noexcept;

    /// Empty; takes its links from `allocator`, whose blocks must have room for a link.
    nmkBalBinTree(Compare compare, fbaAllocatorcoPrf& allocator) noexcept;

    nmkBalBinTree(const nmkBalBinTree&) = delete;
    nmkBalBinTree& operator=(const nmkBalBinTree&) = delete;
    ~nmkBalBinTree();

    /// Inserts an item, compared as compare(item, item in the tree). Items that compare equal are
    /// all kept. On a structure that is flattened already it is an error of the caller, which goes
    /// to the assertion service and adds nothing.
    void add(const void* item);

    /// An item in the tree that compares equal, the topmost of several, or null. On a flattened
    /// structure it is an error of the caller, as for add, and null.
    const void* exist(const void* item);

    /// Flattens the tree if that has not been done, goes to the first link and answers its item,
    /// the largest; null when there is none, and an empty tree stays a tree.
    const void* top() const;

    /// Goes on to the next smaller item and answers it; null at the end, and from then on.
    const void* next() const;

    /// A new allocator of blocks for links, `blocks` to a page, for trees to share.
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
    mutable nmkBalBinTreeLink* m_cursor = nullptr;  // where the reading stands
    mutable std::int32_t m_tree_state = 1;          // 1 while it is a tree, 0 once flattened
    fbaAllocatorcoPrf m_allocator;                  // may be null until the first insertion
    Compare m_compare;
};
