#include "cli/run_program.h"

#include <cerrno>
#include <cstddef>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "cli/file_tree.h"

namespace quillmark::golden {
namespace {

constexpr int kCannotStart = 126;
constexpr std::size_t kPipeBlock = 65536;

void redirect(int target, const char* path, int flags) {
    const int descriptor = open(path, flags, 0600);
    if (descriptor < 0 || dup2(descriptor, target) < 0) {
        _exit(kCannotStart);
    }
    close(descriptor);
}

std::string waitUntil(pid_t process, std::chrono::steady_clock::time_point limit) {
    int status = 0;
    while (true) {
        const pid_t ended = waitpid(process, &status, WNOHANG);
        if (ended == process) {
            break;
        }
        if (std::chrono::steady_clock::now() >= limit) {
            kill(process, SIGKILL);
            waitpid(process, &status, 0);
            return "timeout";
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return WIFSIGNALED(status) ? "signal " + std::to_string(WTERMSIG(status))
                               : std::to_string(WEXITSTATUS(status));
}

bool writeAll(int descriptor, const std::string& bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t count = write(descriptor, bytes.data() + done, bytes.size() - done);
        if (count < 0) {
            return false;
        }
        done += static_cast<std::size_t>(count);
    }
    return true;
}

}  // namespace

RunResult runProgram(const std::filesystem::path& program, const Arguments& arguments,
                     const std::filesystem::path& workDir, const std::filesystem::path& scratch,
                     const RunConditions& conditions) {
    const std::string outFile = scratch / "stdout";
    const std::string errFile = scratch / "stderr";
    std::string ownName = "quillmark";
    Arguments copies = arguments;
    std::vector<char*> vector = {ownName.data()};
    for (std::string& argument : copies) {
        vector.push_back(argument.data());
    }
    vector.push_back(nullptr);

    const pid_t process = fork();
    if (process == 0) {
        // As a shell starts it, whatever this process does about its own signals.
        signal(SIGXFSZ, SIG_DFL);
        signal(SIGPIPE, SIG_DFL);
        if (conditions.memory != 0) {
            const rlimit memory{conditions.memory, conditions.memory};
            const rlimit noDump{0, 0};
            setrlimit(RLIMIT_AS, &memory);
            setrlimit(RLIMIT_CORE, &noDump);
        }
        redirect(STDIN_FILENO, conditions.standardInput.c_str(), O_RDONLY);
        redirect(STDOUT_FILENO, outFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC);
        redirect(STDERR_FILENO, errFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC);
        if (chdir(workDir.c_str()) == 0) {
            execv(program.c_str(), vector.data());
        }
        _exit(kCannotStart);
    }
    if (process < 0) {
        return {"fork failed", "", ""};
    }
    const std::string exit = waitUntil(process, conditions.time);
    return {exit, readBytes(outFile), readBytes(errFile)};
}

int feedPipe(const std::filesystem::path& pipe, const std::string& content, bool withoutEnd) {
    const pid_t process = fork();
    if (process == 0) {
        const int descriptor = open(pipe.c_str(), O_WRONLY);
        bool taken = descriptor >= 0 && writeAll(descriptor, content);
        const std::string more(kPipeBlock, content.empty() ? '\0' : content.back());
        while (taken && withoutEnd) {
            taken = writeAll(descriptor, more);
        }
        _exit(0);
    }
    return process;
}

void stopProcess(int process) {
    if (process > 0) {
        kill(process, SIGKILL);
        waitpid(process, nullptr, 0);
    }
}

}  // namespace quillmark::golden
