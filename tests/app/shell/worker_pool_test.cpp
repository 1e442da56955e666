// worker_pool: tasks in processes of their own, and what becomes of their results.

#include "shell/worker_pool.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <map>
#include <set>
#include <stdexcept>

namespace nmk_shell {
namespace {

class worker_pool : public testing::Test {
  protected:
    void run(std::size_t count, std::size_t workers) {
        WorkerTasks tasks;
        tasks.count = count;
        tasks.work = work;
        tasks.done = [&](std::size_t task, const nmk_text::Result<std::string>& result) {
            EXPECT_FALSE(results.contains(task));
            results[task] = result ? *result : "problem: " + result.error().message;
        };
        tasks.goes_on = [&] { return results.size() < stop_after; };
        run_in_workers(tasks, workers);
        EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
        EXPECT_EQ(errno, ECHILD);
    }

    std::function<std::string(std::size_t)> work = [](std::size_t task) {
        return "result " + std::to_string(task);
    };
    std::map<std::size_t, std::string> results;
    std::size_t stop_after = 1000;
};

TEST_F(worker_pool, returns_the_result_of_every_task_for_any_number_of_workers) {
    for (const std::size_t workers : {1U, 2U, 5U, 40U}) {
        results.clear();
        run(20, workers);
        EXPECT_EQ(results.size(), 20U);
        for (const auto& [task, result] : results) {
            EXPECT_EQ(result, "result " + std::to_string(task));
        }
    }
}

TEST_F(worker_pool, results_of_any_size_and_any_bytes_arrive) {
    work = [](std::size_t task) { return std::string(task * 1'000'000, static_cast<char>(task)); };
    run(5, 2);
    for (const auto& [task, result] : results) {
        EXPECT_EQ(result, work(task));
    }
}

TEST_F(worker_pool, tasks_are_done_in_as_many_processes_as_there_are_tasks) {
    work = [](std::size_t) { return std::to_string(::getpid()); };
    run(4, 2);
    std::set<std::string> processes{std::to_string(::getpid())};
    for (const auto& [task, result] : results) {
        processes.insert(result);
    }
    EXPECT_EQ(processes.size(), 5U);
    results.clear();
    run(4, 1);
    EXPECT_EQ(results[3], std::to_string(::getpid()));
}

TEST_F(worker_pool, a_task_that_throws_is_a_problem_and_the_others_are_done) {
    work = [](std::size_t task) {
        if (task == 1) throw std::runtime_error("out of chalk");
        return std::string("fine");
    };
    for (const std::size_t workers : {1U, 2U}) {
        results.clear();
        run(3, workers);
        EXPECT_EQ(results, (std::map<std::size_t, std::string>{
                               {0, "fine"}, {1, "problem: out of chalk"}, {2, "fine"}}));
    }
}

TEST_F(worker_pool, a_worker_that_is_killed_is_a_problem_and_the_others_are_done) {
    work = [](std::size_t task) {
        if (task == 0) ::raise(SIGKILL);
        if (task == 1) ::_exit(0);
        return std::string("fine");
    };
    run(3, 2);
    EXPECT_EQ(results[0], "problem: its worker was ended by signal 9");
    EXPECT_EQ(results[1], "problem: its worker ended without a result");
    EXPECT_EQ(results[2], "fine");
}

TEST_F(worker_pool, a_stop_starts_no_more_tasks_and_waits_for_those_at_work) {
    stop_after = 3;
    run(20, 1);
    EXPECT_EQ(results.size(), 3U);
    results.clear();
    run(20, 2);
    EXPECT_GE(results.size(), 3U);
    EXPECT_LE(results.size(), 4U);
}

TEST_F(worker_pool, nothing_is_done_without_tasks) {
    run(0, 3);
    EXPECT_TRUE(results.empty());
}

}  // namespace
}  // namespace nmk_shell
