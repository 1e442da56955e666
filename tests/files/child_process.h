// child_process.h: doing something in a process of its own, with less than root may do.
#pragma once

#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>

/// Runs `work` in a child process and answers what it answers, 0 to 99; -1 when it could not run.
inline int in_child(const std::function<int()>& work) {
    const pid_t child = ::fork();
    if (child == 0) ::_exit(work());
    int status = 0;
    if (child < 0 || ::waitpid(child, &status, 0) != child || !WIFEXITED(status)) return -1;
    return WEXITSTATUS(status) < 100 ? WEXITSTATUS(status) : -1;
}

/// The same with the rights of nobody, for rights that root ignores.
inline int in_powerless_child(const std::function<int()>& work) {
    return in_child([&] {
        constexpr uid_t nobody = 65534;
        const bool powerless = ::geteuid() != 0 || (::setgid(nobody) == 0 && ::setuid(nobody) == 0);
        return powerless ? work() : 100;
    });
}

/// The same where no file may become longer than `bytes`, as on a disk that is full then.
inline int in_child_with_little_room(rlim_t bytes, const std::function<int()>& work) {
    return in_child([&] {
        const rlimit limit{bytes, bytes};
        ::signal(SIGXFSZ, SIG_IGN);
        return ::setrlimit(RLIMIT_FSIZE, &limit) == 0 ? work() : 100;
    });
}
