// child_process.h: parts of a test that run in a process of their own.
#pragma once

#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>

/// Runs it in a child process and returns its exit code; 1000 and the signal if one ended it.
inline int in_a_child(const std::function<int()>& what) {
    const pid_t child = ::fork();
    if (child == 0) {
        ::_exit(what());
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFSIGNALED(status) ? 1000 + WTERMSIG(status) : WEXITSTATUS(status);
}

/// The same with the rights of a user who owns nothing. Root may do everything, so what a disk
/// refuses can only be seen this way; a run that is not root's has no special rights to give up.
inline int without_rights(const std::function<int()>& what) {
    return in_a_child([&] {
        constexpr uid_t nobody = 65534;
        if (::geteuid() == 0 && (::setgid(nobody) != 0 || ::setuid(nobody) != 0)) {
            return 255;
        }
        return what();
    });
}

/// Runs it in a child process where no file may become longer than `bytes`, as on a disk that is
/// full then.
inline int with_little_room(rlim_t bytes, const std::function<int()>& what) {
    return in_a_child([&] {
        const rlimit limit{bytes, bytes};
        ::signal(SIGXFSZ, SIG_IGN);
        return ::setrlimit(RLIMIT_FSIZE, &limit) == 0 ? what() : 255;
    });
}
