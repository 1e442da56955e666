#include <nmktoolbox/collections/nmkBalBinTree.h>
#include <utils/utAssert.h>

#include <new>

namespace {

constexpr int default_blocks_per_page = 50;

constexpr std::int32_t left_is_deeper = 1;
constexpr std::int32_t right_is_deeper = -1;

nmkBalBinTreeLink*& child_on(nmkBalBinTreeLink* node, int side) {
    return side == left_is_deeper ? node->left : node->right;
}

}  // namespace

nmkBalBinTreeLink* nmkBalBinTree::treehead = nullptr;
nmkBalBinTreeLink* nmkBalBinTree::treelast = nullptr;

// What the descent to the position of a new link records.
struct nmkBalBinTree::Path {
    nmkBalBinTreeLink* pivot;         // the deepest unbalanced node, or the root
    nmkBalBinTreeLink* pivot_parent;  // null when the pivot is the root
    nmkBalBinTreeLink* last;          // the parent of the new link
    int last_side;                    // the side of the new link
    const void* item;
};

nmkBalBinTree::nmkBalBinTree(Compare compare) noexcept : m_compare(compare) {}

nmkBalBinTree::nmkBalBinTree(Compare compare, fbaAllocatorcoPrf& allocator) noexcept
    : m_allocator(allocator), m_compare(compare) {}

nmkBalBinTree::~nmkBalBinTree() = default;

// Method: D. E. Knuth, The Art of Computer Programming, volume 3, section 6.2.3, algorithm A.
void nmkBalBinTree::add(const void* item) {
    UT_ASSERT(m_tree_state == 1,
              "nmkBalBinTree::add: the tree is flattened; expected a tree that has not been read");
    if (m_tree_state == 0) return;
    nmkBalBinTreeLink* const link = makelink(item);
    if (m_root == nullptr) {
        m_root = link;
        return;
    }
    const Path path = find_place(item);
    child_on(path.last, path.last_side) = link;
    const int side = mark_path(path, link);
    if (path.pivot->balance == side) {
        rebalance(path, side);
    } else {
        path.pivot->balance += side;
    }
}

const void* nmkBalBinTree::exist(const void* item) {
    UT_ASSERT(
        m_tree_state == 1,
        "nmkBalBinTree::exist: the tree is flattened; expected a tree that has not been read");
    const nmkBalBinTreeLink* node = m_tree_state == 1 ? m_root : nullptr;
    while (node != nullptr) {
        const int order = m_compare(item, node->item);
        if (order == 0) return node->item;
        node = order < 0 ? node->left : node->right;
    }
    return nullptr;
}

const void* nmkBalBinTree::top() const {
    if (m_tree_state == 1 && m_root != nullptr) breaktree();
    m_cursor = m_root;
    return m_cursor != nullptr ? m_cursor->item : nullptr;
}

const void* nmkBalBinTree::next() const {
    if (m_cursor == nullptr) return nullptr;
    m_cursor = m_cursor->left;
    return m_cursor != nullptr ? m_cursor->item : nullptr;
}

fbaAllocatorcoPrf nmkBalBinTree::get_allocator(int blocks) {
    return fbaAllocatorcoPrf(new fbaAllocator(static_cast<int>(sizeof(nmkBalBinTreeLink)), blocks));
}

// Equal items go right, after those in the tree.
nmkBalBinTree::Path nmkBalBinTree::find_place(const void* item) const {
    Path path{m_root, nullptr, m_root, 0, item};
    nmkBalBinTreeLink* parent = nullptr;
    for (nmkBalBinTreeLink* node = m_root; node != nullptr;) {
        if (node->balance != 0) {
            path.pivot = node;
            path.pivot_parent = parent;
        }
        path.last = parent = node;
        path.last_side = m_compare(item, node->item) < 0 ? left_is_deeper : right_is_deeper;
        node = child_on(node, path.last_side);
    }
    return path;
}

// Deliberate: the item is compared again from the pivot down, although the first descent could have
// kept the path. Callers may rely on the sequence of comparisons.
//
// Returns the side of the pivot on which the new link is.
int nmkBalBinTree::mark_path(const Path& path, const nmkBalBinTreeLink* added) {
    const auto side_of = [&](const nmkBalBinTreeLink* node) {
        return m_compare(path.item, node->item) < 0 ? left_is_deeper : right_is_deeper;
    };
    const int pivot_side = side_of(path.pivot);
    nmkBalBinTreeLink* node = child_on(path.pivot, pivot_side);
    while (node != added) {
        node->balance = side_of(node);
        node = child_on(node, node->balance);
    }
    return pivot_side;
}

void nmkBalBinTree::rebalance(const Path& path, int side) {
    const nmkBalBinTreeLink* const child = child_on(path.pivot, side);
    nmkBalBinTreeLink* const subtree =
        child->balance == side ? turn_once(path.pivot, side) : turn_twice(path.pivot, side);
    nmkBalBinTreeLink* const parent = path.pivot_parent;
    if (parent == nullptr) {
        m_root = subtree;
    } else {
        (parent->left == path.pivot ? parent->left : parent->right) = subtree;
    }
}

// The child on the deep side becomes the root of the subtree.
nmkBalBinTreeLink* nmkBalBinTree::turn_once(nmkBalBinTreeLink* pivot, int side) {
    nmkBalBinTreeLink* subtree = pivot;
    side == left_is_deeper ? rotright(subtree) : rotleft(subtree);
    pivot->balance = 0;
    subtree->balance = 0;
    return subtree;
}

// The grandchild between pivot and child becomes the root of the subtree.
nmkBalBinTreeLink* nmkBalBinTree::turn_twice(nmkBalBinTreeLink* pivot, int side) {
    nmkBalBinTreeLink* const child = child_on(pivot, side);
    nmkBalBinTreeLink*& inner = child_on(pivot, side);
    side == left_is_deeper ? rotleft(inner) : rotright(inner);
    nmkBalBinTreeLink* subtree = pivot;
    side == left_is_deeper ? rotright(subtree) : rotleft(subtree);
    pivot->balance = subtree->balance == side ? -side : 0;
    child->balance = subtree->balance == -side ? side : 0;
    subtree->balance = 0;
    return subtree;
}

void nmkBalBinTree::breaktree() const {
    treehead = nullptr;
    treelast = nullptr;
    list(m_root);
    m_root = treehead;
    m_tree_state = 0;
}

// From the largest item to the smallest. Recurses on right children only, so the depth is at most
// the height of the tree.
void nmkBalBinTree::list(nmkBalBinTreeLink* node) {
    while (node != nullptr) {
        list(node->right);
        if (treehead == nullptr) treehead = node;
        node->right = treelast;
        if (treelast != nullptr) treelast->left = node;
        treelast = node;
        node = node->left;
    }
}

nmkBalBinTreeLink* nmkBalBinTree::makelink(const void* item) {
    if (m_allocator.get() == nullptr) m_allocator = get_allocator(default_blocks_per_page);
    return new (m_allocator->allocate()) nmkBalBinTreeLink{nullptr, nullptr, item, 0};
}

void nmkBalBinTree::rotleft(nmkBalBinTreeLink*& node) {
    nmkBalBinTreeLink* const up = node->right;
    node->right = up->left;
    up->left = node;
    node = up;
}

void nmkBalBinTree::rotright(nmkBalBinTreeLink*& node) {
    nmkBalBinTreeLink* const up = node->left;
    node->left = up->right;
    up->right = node;
    node = up;
}
