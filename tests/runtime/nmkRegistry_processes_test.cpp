// Sessions of several threads and processes, some of which are killed.
#include <gtest/gtest.h>
#include <nmktoolbox/runtime/nmkRegistry.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <new>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "child_process.h"
#include "holding_child.h"
#include "registry_scratch.h"

namespace {

const HKEY user = HKEY_CURRENT_USER;
constexpr unsigned seed = 20261122;

// A number that this process and its children share.
class SharedNumber {
  public:
    SharedNumber()
        : m_number(new (::mmap(nullptr, sizeof(std::atomic<int>), PROT_READ | PROT_WRITE,
                               MAP_SHARED | MAP_ANONYMOUS, -1, 0)) std::atomic<int>(0)) {}
    SharedNumber(const SharedNumber&) = delete;
    SharedNumber& operator=(const SharedNumber&) = delete;
    ~SharedNumber() { ::munmap(m_number, sizeof *m_number); }

    std::atomic<int>& operator*() const { return *m_number; }

  private:
    std::atomic<int>* m_number;
};

constexpr const char* path = "Software\\counter";

// Reads the number and writes the next one; what comes between would be lost.
void count_one() {
    nmkRegistry registry;
    ASSERT_NE(registry.valid(), 0);
    ASSERT_EQ(registry.create_key(user, path), 0);
    int count = 0;
    registry.query_value("count", count);
    ASSERT_EQ(registry.set_value("count", count + 1), 0);
}

void count_in_threads(int threads, int times) {
    std::vector<std::thread> running;
    for (int i = 0; i < threads; ++i) {
        running.emplace_back([=] {
            for (int n = 0; n < times; ++n) count_one();
        });
    }
    for (std::thread& thread : running) thread.join();
}

int counted() {
    nmkRegistry registry;
    int count = -1;
    EXPECT_EQ(registry.open_key(user, path, 0, 0), 0);
    EXPECT_EQ(registry.query_value("count", count), 0);
    return count;
}

// A text whose characters are all the same, so that a half of it would be seen.
utString text_of_number(int number) {
    const std::string text(static_cast<std::size_t>(1000 + number % 5000),
                           static_cast<char>('a' + number % 26));
    return text.c_str();
}

// Session after session: writes the number twice, makes and deletes a tree, and reports the number
// when the session is over.
[[noreturn]] void write_sessions(std::atomic<int>& finished) {
    for (int number = finished + 1;; ++number) {
        {
            nmkRegistry registry;
            if (registry.valid() == 0) continue;
            registry.create_key(user, path);
            registry.set_value("number", number);
            registry.set_value("text", text_of_number(number));
            registry.copy_tree(user, path, "Software\\copy\\of");
            registry.recursively_delete_key(user, "Software\\copy");
        }
        finished = number;
    }
}

bool is_whole(const utString& text) {
    return !text.is_empty() && text.view().find_first_not_of(text[0]) == std::string_view::npos &&
           text.length() >= 1000;
}

// What every session must find: each value whole, and nothing missing of a session that was over.
void check_store(nmkRegistry& registry, int finished) {
    int number = 0;
    utString text;
    if (registry.open_key(user, path, 0, 0) != 0) {
        EXPECT_EQ(finished, 0);
        return;
    }
    const bool has_number = registry.query_value("number", number) == 0;
    EXPECT_EQ(has_number, number > 0);
    EXPECT_GE(number, finished);
    const bool has_text = registry.query_value("text", text) == 0;
    EXPECT_TRUE(has_text ? is_whole(text) : finished == 0) << text.length();
}

// Whether another session is over within five seconds.
bool goes_on(const std::atomic<int>& finished) {
    const int before = finished;
    for (int i = 0; i < 5000 && finished == before; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return finished != before;
}

pid_t start(std::atomic<int>& finished) {
    const pid_t process = ::fork();
    if (process == 0) write_sessions(finished);
    return process;
}

void end(pid_t process) {
    ::kill(process, SIGKILL);
    ::waitpid(process, nullptr, 0);
}

// Microseconds within which a new process ends about two sessions on this machine as it is loaded
// now, at least 12,000.
unsigned time_of_two_sessions(std::atomic<int>& finished) {
    const auto begin = std::chrono::steady_clock::now();
    const pid_t process = start(finished);
    EXPECT_TRUE(goes_on(finished) && goes_on(finished));
    end(process);
    const std::chrono::duration<double, std::micro> time = std::chrono::steady_clock::now() - begin;
    return std::max(12000u, static_cast<unsigned>(time.count()));
}

}  // namespace

TEST(nmkRegistry_processes, two_processes_with_eight_threads_lose_no_change) {
    const RegistryScratch scratch;
    constexpr int threads = 8, times = 12;
    const pid_t other = ::fork();
    if (other == 0) {
        count_in_threads(threads, times);
        ::_exit(testing::Test::HasFailure() ? 1 : 0);
    }
    count_in_threads(threads, times);
    int status = -1;
    ::waitpid(other, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(counted(), 2 * threads * times);
}

TEST(nmkRegistry_processes, a_session_waits_for_that_of_another_process) {
    const RegistryScratch scratch;
    HoldingChild holder([] { new nmkRegistry; });
    std::atomic<bool> is_over = false;
    std::thread waiting([&] {
        const nmkRegistry registry;
        is_over = true;
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_FALSE(is_over);
    holder.kill();
    waiting.join();
}

TEST(nmkRegistry_processes, a_holder_that_is_killed_alone_leaves_the_next_object_valid_at_once) {
    const RegistryScratch scratch;
    HoldingChild([] { new nmkRegistry; }).kill();
    EXPECT_NE(nmkRegistry().valid(), 0);
}

TEST(nmkRegistry_processes, a_waiter_whose_holder_is_killed_is_invalid_and_the_next_one_valid) {
    const RegistryScratch scratch;
    HoldingChild holder([] { new nmkRegistry; });
    int first_valid = -1;
    std::thread waiting([&] { first_valid = nmkRegistry().valid(); });
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    holder.kill();
    waiting.join();
    EXPECT_EQ(first_valid, 0);
    EXPECT_NE(nmkRegistry().valid(), 0);
}

TEST(nmkRegistry_processes,
     killed_at_200_random_moments_tear_nothing_and_the_next_goes_on_at_once) {
    const RegistryScratch scratch;
    const SharedNumber finished;
    std::mt19937 random(seed);
    const unsigned longest = time_of_two_sessions(*finished);
    for (int round = 0; round < 200; ++round) {
        const pid_t process = start(*finished);
        std::this_thread::sleep_for(std::chrono::microseconds(random() % longest));
        end(process);
        nmkRegistry registry;
        ASSERT_NE(registry.valid(), 0) << "round " << round << ", seed " << seed;
        check_store(registry, *finished);
        ASSERT_FALSE(HasFailure()) << "round " << round << ", seed " << seed;
    }
    EXPECT_GT(*finished, 20) << "too few sessions were over before they were killed";
    EXPECT_EQ(scratch.file_count(), 3u) << "registry, its lock and the locks: nothing was damaged";
}

TEST(nmkRegistry_processes, killed_while_others_wait_leave_the_store_whole_and_the_others_go_on) {
    const RegistryScratch scratch;
    const SharedNumber finished, of_second, of_third;
    const pid_t others[] = {start(*of_second), start(*of_third)};
    std::mt19937 random(seed);
    int invalid = 0;
    for (int round = 0; round < 60; ++round) {
        const pid_t process = start(*finished);
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 12000));
        end(process);
        const nmkRegistry first;
        if (first.valid() == 0) {
            ++invalid;
            ASSERT_NE(nmkRegistry().valid(), 0) << "round " << round << ", seed " << seed;
        }
    }
    EXPECT_TRUE(goes_on(*of_second));
    EXPECT_TRUE(goes_on(*of_third));
    for (const pid_t other : others) end(other);
    nmkRegistry registry;
    utString text;
    ASSERT_NE(registry.valid(), 0);
    ASSERT_EQ(registry.open_key(user, path, 0, 0), 0);
    EXPECT_EQ(registry.query_value("text", text), 0);
    EXPECT_TRUE(is_whole(text));
    EXPECT_LT(invalid, 60);
    EXPECT_EQ(scratch.file_count(), 3u);
}
