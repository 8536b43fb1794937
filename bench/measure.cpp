// Runs a command and prints what it took:  measure [--ready MB] COMMAND [ARGUMENT...]
// Standard output of the command is dropped; what is printed is one line with wall, user and system
// time in milliseconds, the peak of resident memory in bytes, and the exit status.
//
// With --ready, so many megabytes are taken, touched and given back before. The host of a virtual
// machine takes back memory that lies free for a while, and it costs milliseconds a megabyte to get
// it again: a command would pay for how long nobody had run one, and more than for all it does.

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include <fcntl.h>
#include <sys/mman.h>
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

/// The caller's own peak would count as that of the command, so a process of its own does this.
void makeMemoryReady(std::size_t megabytes) {
    constexpr std::size_t kMegabyte = std::size_t{1} << 20;
    constexpr std::size_t kPage = 4096;
    const pid_t child = fork();
    if (child == 0) {
        const std::size_t size = megabytes * kMegabyte;
        void* const memory =
            mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (memory != MAP_FAILED) {
            madvise(memory, size, MADV_HUGEPAGE);
            for (std::size_t at = 0; at < size; at += kPage) {
                static_cast<volatile char*>(memory)[at] = 1;
            }
        }
        _exit(0);
    }
    waitpid(child, nullptr, 0);
}

[[noreturn]] void become(char* command[]) {
    const int nowhere = open("/dev/null", O_WRONLY);
    dup2(nowhere, STDOUT_FILENO);
    execvp(command[0], command);
    std::perror(command[0]);
    _exit(kCannotRun);
}

/// Runs the command, prints the line, and returns the exit status.
int measure(char* command[]) {
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = vfork();
    if (child == 0) {
        become(command);
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

}  // namespace

int main(int argumentCount, char* arguments[]) {
    int command = 1;
    if (argumentCount > 2 && std::string_view(arguments[1]) == "--ready") {
        makeMemoryReady(std::strtoul(arguments[2], nullptr, 10));
        command = 3;
    }
    if (argumentCount <= command) {
        std::fputs("usage: measure [--ready MB] COMMAND [ARGUMENT...]\n", stderr);
        return kCannotRun;
    }
    return measure(arguments + command);
}
