// Runs a command and prints what it took:  measure COMMAND [ARGUMENT...]
// Standard output of the command is dropped; what is printed is one line with wall, user and system
// time in milliseconds, the peak of resident memory in bytes, and the exit status.

#include <cerrno>
#include <chrono>
#include <cstdio>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr double kMillisecondsPerSecond = 1e3;
constexpr double kMicrosecondsPerMillisecond = 1e3;
constexpr int kCannotRun = 127;

double milliseconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) * kMillisecondsPerSecond +
           static_cast<double>(time.tv_usec) / kMicrosecondsPerMillisecond;
}

[[noreturn]] void become(char* command[]) {
    const int nowhere = open("/dev/null", O_WRONLY);
    dup2(nowhere, STDOUT_FILENO);
    execvp(command[0], command);
    std::perror(command[0]);
    _exit(kCannotRun);
}

}  // namespace

int main(int argumentCount, char* arguments[]) {
    if (argumentCount < 2) {
        std::fputs("usage: measure COMMAND [ARGUMENT...]\n", stderr);
        return kCannotRun;
    }
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = vfork();
    if (child == 0) {
        become(arguments + 1);
    }
    int status = 0;
    rusage usage{};
    while (wait4(child, &status, 0, &usage) < 0) {
        if (errno != EINTR) {
            std::perror("wait4");
            return kCannotRun;
        }
    }
    const std::chrono::duration<double, std::milli> wall = std::chrono::steady_clock::now() - start;
    const int exitStatus = WIFEXITED(status) ? WEXITSTATUS(status) : kCannotRun;
    // Linux counts the peak in KiB.
    std::printf("%.2f %.2f %.2f %ld %d\n", wall.count(), milliseconds(usage.ru_utime),
                milliseconds(usage.ru_stime), usage.ru_maxrss * 1024, exitStatus);
    return exitStatus;
}
