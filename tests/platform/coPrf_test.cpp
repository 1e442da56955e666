#include <gtest/gtest.h>
#include <ncamcontainer/coPrf.h>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

namespace {

struct Counted {
    explicit Counted(std::atomic<int>& deleted_count) : deleted(deleted_count) {}
    virtual ~Counted() { ++deleted; }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;

    std::atomic<int>& deleted;
};
struct Derived : Counted {
    using Counted::Counted;
};
using Handle = coPrf<Counted>;

}  // namespace

TEST(coPrf, is_null_by_default) {
    const Handle handle;
    EXPECT_EQ(handle.get(), nullptr);
    EXPECT_EQ(handle.use_count(), 0);
    EXPECT_FALSE(handle.external());
    EXPECT_FALSE(static_cast<bool>(handle));
}

TEST(coPrf, deletes_its_target_with_the_last_handle) {
    std::atomic<int> deleted{0};
    {
        Handle first(new Counted(deleted));
        EXPECT_EQ(first.use_count(), 1);
        {
            const Handle second = first;
            EXPECT_EQ(second.use_count(), 2);
            EXPECT_TRUE(first == second);
        }
        EXPECT_EQ(deleted, 0);
        EXPECT_EQ(first.use_count(), 1);
    }
    EXPECT_EQ(deleted, 1);
}

TEST(coPrf, external_handles_never_delete_their_target) {
    std::atomic<int> deleted{0};
    Counted target(deleted);
    {
        const Handle handle(coPrfExtern(), &target);
        const Handle copy = handle;
        EXPECT_TRUE(handle.external());
        EXPECT_TRUE(copy.external());
        EXPECT_EQ(copy.use_count(), 2);
    }
    EXPECT_EQ(deleted, 0);
}

TEST(coPrf, an_owning_handle_is_not_external) {
    std::atomic<int> deleted{0};
    EXPECT_FALSE(Handle(new Counted(deleted)).external());
    EXPECT_FALSE(Handle(std::make_shared<Counted>(deleted)).external());
    EXPECT_EQ(deleted, 2);
}

TEST(coPrf, self_assignment_keeps_the_target) {
    std::atomic<int> deleted{0};
    Handle handle(new Counted(deleted));
    const Handle& same = handle;
    handle = same;
    EXPECT_EQ(deleted, 0);
    EXPECT_EQ(handle.use_count(), 1);
    EXPECT_NE(handle.get(), nullptr);
}

TEST(coPrf, assignment_releases_the_old_target) {
    std::atomic<int> deleted{0};
    Handle handle(new Counted(deleted));
    handle = Handle(new Counted(deleted));
    EXPECT_EQ(deleted, 1);
    handle.reset();
    EXPECT_EQ(deleted, 2);
}

TEST(coPrf, shares_its_counts_with_standard_pointers_in_both_directions) {
    std::atomic<int> deleted{0};
    std::shared_ptr<Counted> standard = std::make_shared<Counted>(deleted);
    Handle handle = standard;
    EXPECT_EQ(handle.use_count(), 2);
    standard.reset();
    EXPECT_EQ(deleted, 0);
    const std::shared_ptr<Counted> back = handle;
    const std::weak_ptr<Counted> weak = back;
    EXPECT_EQ(handle.use_count(), 2);
    EXPECT_EQ(weak.use_count(), 2);
}

TEST(coPrf, a_weak_use_does_not_keep_the_target) {
    std::atomic<int> deleted{0};
    std::weak_ptr<Counted> weak;
    {
        const Handle handle(new Counted(deleted));
        weak = handle.shared();
    }
    EXPECT_EQ(deleted, 1);
    EXPECT_TRUE(weak.expired());
}

TEST(coPrf, converts_to_a_handle_to_the_base) {
    std::atomic<int> deleted{0};
    {
        const coPrf<Derived> derived(new Derived(deleted));
        const Handle base = derived;
        EXPECT_EQ(base.use_count(), 2);
    }
    EXPECT_EQ(deleted, 1);
}

TEST(coPrf, counts_uses_correctly_when_threads_copy_and_release_handles) {
    std::atomic<int> deleted{0};
    Handle handle(new Counted(deleted));
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([mine = handle] {
            for (int round = 0; round < 20000; ++round) {
                Handle copy = mine;
                Handle other;
                other = copy;
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    threads.clear();
    EXPECT_EQ(handle.use_count(), 1);
    EXPECT_EQ(deleted, 0);
    handle.reset();
    EXPECT_EQ(deleted, 1);
}
