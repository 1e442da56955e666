#include <gtest/gtest.h>
#include <thread/thrSpinLock.h>
#include <thread/thrTask.h>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

namespace {

class AddingTask : public thrTask {
  public:
    explicit AddingTask(int& sum) : m_sum(sum) {}
    ~AddingTask() override { m_sum += 100; }
    int do_it() override { return ++m_sum; }

  private:
    int& m_sum;
};

}  // namespace

TEST(thrSpinMutex, an_exclusive_holder_excludes_all_others) {
    const thrSpinMutex mutex;
    EXPECT_TRUE(mutex.try_lock(thr_lock_exclusive));
    EXPECT_FALSE(mutex.try_lock(thr_lock_exclusive));
    EXPECT_FALSE(mutex.try_lock(thr_lock_shared));
    mutex.unlock(thr_lock_exclusive);
    EXPECT_TRUE(mutex.try_lock(thr_lock_shared));
}

TEST(thrSpinMutex, shared_holders_exclude_only_an_exclusive_one) {
    const thrSpinMutex mutex;
    EXPECT_TRUE(mutex.try_lock(thr_lock_shared));
    EXPECT_TRUE(mutex.try_lock(thr_lock_shared));
    EXPECT_FALSE(mutex.try_lock(thr_lock_exclusive));
    mutex.unlock(thr_lock_shared);
    EXPECT_FALSE(mutex.try_lock(thr_lock_exclusive));
    mutex.unlock(thr_lock_shared);
    EXPECT_TRUE(mutex.try_lock(thr_lock_exclusive));
}

TEST(thrSpinMutex, the_lock_type_none_holds_nothing) {
    const thrSpinMutex mutex;
    mutex.lock(thr_lock_exclusive);
    const thrSpinLock lock(thr_lock_none, mutex);
    EXPECT_TRUE(mutex.try_lock(thr_lock_none));
    mutex.unlock(thr_lock_none);
    EXPECT_FALSE(mutex.try_lock(thr_lock_shared));
}

TEST(thrSpinLock, holds_the_mutex_for_its_scope) {
    const thrSpinMutex mutex;
    {
        const thrSpinLock lock(thr_lock_exclusive, mutex);
        EXPECT_FALSE(mutex.try_lock(thr_lock_exclusive));
    }
    EXPECT_TRUE(mutex.try_lock(thr_lock_exclusive));
}

TEST(thrSpinLock, the_lock_type_2_is_exclusive) { EXPECT_EQ(thr_lock_exclusive, 2); }

TEST(thrSpinLock, exclusive_locks_of_several_threads_lose_no_addition) {
    const thrSpinMutex mutex;
    int sum = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < 5000; ++round) {
                const thrSpinLock lock(thr_lock_exclusive, mutex);
                ++sum;
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(sum, 20000);
}

TEST(thrSpinLock, readers_on_several_threads_see_whole_changes) {
    const thrSpinMutex mutex;
    int first = 0;
    int second = 0;
    std::atomic<bool> torn{false};
    const auto read = [&] {
        for (int round = 0; round < 5000; ++round) {
            const thrSpinLock lock(thr_lock_shared, mutex);
            if (first != second) torn = true;
        }
    };
    const auto write = [&] {
        for (int round = 0; round < 2000; ++round) {
            const thrSpinLock lock(thr_lock_exclusive, mutex);
            ++first;
            ++second;
        }
    };
    std::vector<std::thread> threads;
    threads.emplace_back(write);
    for (int i = 0; i < 3; ++i) threads.emplace_back(read);
    for (std::thread& thread : threads) thread.join();
    EXPECT_FALSE(torn);
    EXPECT_EQ(second, 2000);
}

TEST(thrTask, does_its_work_and_is_deleted_through_the_base) {
    int sum = 0;
    {
        const std::unique_ptr<thrTask> task = std::make_unique<AddingTask>(sum);
        EXPECT_EQ(task->do_it(), 1);
    }
    EXPECT_EQ(sum, 101);
}
