// Runs the program on recorded cases and compares everything that a user would see.
//
//   golden_runner --program FILE [--update] CASE...
//
// A case is a folder:
//   cmd      the arguments of one run per line, quoted as for a shell; an empty line is a run
//            without arguments
//   in/      what the working directory holds before the first run
//   setup    what files alone cannot tell, one directive per line:
//              mkdir PATH
//              chmod OCTAL PATH
//              copy FILE PATH           FILE as seen from the case
//              symlink TARGET PATH
//              fifo PATH FILE           a pipe from which FILE, as seen from the case, comes
//              fifo-without-end PATH FILE   the same, and then the last byte of FILE forever
//              env NAME=VALUE
//              file-limit BYTES         no file of the program grows longer, as on a full disk
//              memory-limit BYTES       so much address space has the program; the case is passed
//                                       over where a sanitizer needs more than any limit. A program
//                                       for Windows has no limit
//              standard-input PATH      what each run reads there; nothing by default
//              file-on-stdout           standard output is a file, whose lines end as they do in it
//              occupy-staging-names     other directories have the names of staging directories
//   stdout, stderr   the output of all runs; absent if empty
//   exit     the exit statuses, one per line; absent if all are 0
//   out/     every file of the working directory that appeared or changed; of a package x.zpki the
//            folder x.zpki.d/ holds the files and x.zpki.list their names and sizes in order
//   gone     the files of in/ that disappeared
//   tmp/     what is left in the directory for temporary files
//   windows  why no program for Windows can do that; such a program is not run then
// What differs from run to run is written as a placeholder (see placeholders.h), as is the usage
// text, whose record is the file `usage` beside the folders of the commands. --update records what
// the program does now; the difference is then to be reviewed.
//
// With --windows LAUNCHER the program is one for Windows, which LAUNCHER runs. Its console is to
// end each line by CR LF, which the record does not show, and its paths begin with the drive Z:. If
// no case could be run the status is 77.

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <iostream>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include <pwd.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "cli/command_file.h"
#include "cli/file_tree.h"
#include "cli/placeholders.h"
#include "cli/run_program.h"
#include "support/sanitizer.h"

namespace quillmark::golden {
namespace {

/// The second that the program would read at this moment. std::time() may lag behind it, as it
/// takes the clock of the system's last tick.
std::time_t secondsNow() {
    return std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
}

namespace fs = std::filesystem;

constexpr std::chrono::seconds kCaseTimeLimit{50};
constexpr std::chrono::seconds kCaseTimeLimitWindows{200};  // each run of a launcher takes its time
constexpr int kSkipped = 77;

/// How the program is run.
struct Settings {
    bool isForWindows() const { return !launcher.empty(); }
    /// A path as the program names it.
    std::string pathOf(const fs::path& path) const {
        return (isForWindows() ? "Z:" : "") + path.string();
    }

    std::chrono::seconds timeLimit() const {
        return isForWindows() ? kCaseTimeLimitWindows : kCaseTimeLimit;
    }

    fs::path program;
    fs::path launcher;  ///< what runs a program for Windows
    bool update = false;
};

enum class Outcome { Passed, Failed, Skipped };

/// Everything that is compared of a case.
struct Record {
    std::string out;
    std::string err;
    std::string exit;
    std::string gone;
    FileTree files;
    FileTree tempFiles;
};

/// The directories and the environment of one run of a case; they go with it.
class Playground {
  public:
    Playground() {
        std::string name = fs::temp_directory_path() / "quillmark_golden_XXXXXX";
        root = fs::canonical(mkdtemp(name.data()));
        work = root / "work";
        temp = root / "tmp";
        fs::create_directory(work);
        fs::create_directory(temp);
        getrlimit(RLIMIT_FSIZE, &oldLimit_);
    }
    Playground(const Playground&) = delete;
    Playground& operator=(const Playground&) = delete;
    ~Playground() {
        for (const int process : feeders) {
            stopProcess(process);
        }
        for (const auto& [name, value] : oldEnvironment_) {
            if (value) {
                setenv(name.c_str(), value->c_str(), 1);
            } else {
                unsetenv(name.c_str());
            }
        }
        tzset();
        setrlimit(RLIMIT_FSIZE, &oldLimit_);
        std::error_code ignored;
        fs::remove_all(root, ignored);
    }

    /// Sets a variable of the environment for the length of the case. The runner keeps to it too,
    /// as it must know the program's time zone.
    void setVariable(const std::string& name, const std::string& value) {
        const char* old = std::getenv(name.c_str());
        oldEnvironment_.try_emplace(
            name, old == nullptr ? std::nullopt : std::optional<std::string>(old));
        setenv(name.c_str(), value.c_str(), 1);
        tzset();
    }

    /// Lets no file of the program grow beyond a size, as if the disk were full then.
    void limitFiles(std::uint64_t bytes) {
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit limit = oldLimit_;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }

    /// Takes the names of the staging directories that a run could want from now on.
    void occupyStagingNames() {
        const std::time_t now = secondsNow();
        for (std::time_t instant = now; instant <= now + kCaseTimeLimit.count(); ++instant) {
            occupied_.push_back(temp / stagingName(instant));
            fs::create_directory(occupied_.back());
        }
    }

    /// Gives the names back; false if something was put into one of the directories.
    bool freeStagingNames() {
        bool untouched = true;
        for (const fs::path& directory : occupied_) {
            std::error_code error;
            untouched = fs::remove(directory, error) && untouched;
        }
        occupied_.clear();
        return untouched;
    }

    fs::path root;
    fs::path work;
    fs::path temp;
    /// Processes that feed named pipes.
    std::vector<int> feeders;
    /// Address space that the program may take, 0 for no limit [bytes].
    std::uint64_t memoryLimit = 0;
    /// The file from which standard input comes.
    fs::path standardInput = "/dev/null";
    /// Whether standard output is a file.
    bool writesFile = false;

  private:
    rlimit oldLimit_{};
    std::vector<fs::path> occupied_;
    std::map<std::string, std::optional<std::string>> oldEnvironment_;
};

bool setUpOne(const Arguments& words, const fs::path& caseDir, Playground& playground) {
    const auto at = [&](std::size_t i) { return playground.work / words[i]; };
    if (words.size() == 2 && words[0] == "mkdir") {
        return fs::create_directories(at(1));
    }
    if (words.size() == 3 && words[0] == "chmod") {
        return chmod(at(2).c_str(), static_cast<mode_t>(std::stoul(words[1], nullptr, 8))) == 0;
    }
    if (words.size() == 3 && words[0] == "copy") {
        return fs::copy_file(caseDir / words[1], at(2));
    }
    if (words.size() == 3 && words[0] == "symlink") {
        fs::create_symlink(words[1], at(2));
        return true;
    }
    if (words.size() == 3 && (words[0] == "fifo" || words[0] == "fifo-without-end")) {
        if (mkfifo(at(1).c_str(), 0600) != 0) {
            return false;
        }
        playground.feeders.push_back(
            feedPipe(at(1), readBytes(caseDir / words[2]), words[0] != "fifo"));
        return true;
    }
    if (words.size() == 2 && words[0] == "file-limit") {
        playground.limitFiles(std::stoull(words[1]));
        return true;
    }
    if (words.size() == 2 && words[0] == "memory-limit") {
        playground.memoryLimit = std::stoull(words[1]);
        return true;
    }
    if (words.size() == 2 && words[0] == "standard-input") {
        playground.standardInput = at(1);
        return true;
    }
    if (words.size() == 1 && words[0] == "file-on-stdout") {
        playground.writesFile = true;
        return true;
    }
    if (words.size() == 1 && words[0] == "occupy-staging-names") {
        playground.occupyStagingNames();
        return true;
    }
    if (words.size() == 2 && words[0] == "env") {
        const std::size_t equals = words[1].find('=');
        if (equals == std::string::npos) {
            return false;
        }
        playground.setVariable(words[1].substr(0, equals), words[1].substr(equals + 1));
        return true;
    }
    return false;
}

bool setUp(const fs::path& caseDir, Playground& playground) {
    if (fs::exists(caseDir / "in")) {
        fs::copy(caseDir / "in", playground.work,
                 fs::copy_options::recursive | fs::copy_options::copy_symlinks);
    }
    const std::string directives = readBytes(caseDir / "setup");
    for (const std::string_view line : splitLines(directives)) {
        const auto words = splitCommand(line);
        if (!words || !setUpOne(*words, caseDir, playground)) {
            std::cout << "bad directive: " << line << '\n';
            return false;
        }
    }
    return true;
}

std::string userName() {
    const passwd* entry = getpwuid(getuid());
    return entry == nullptr ? "" : entry->pw_name;
}

/// Adds one file of the working directory, a package as the list and the files that it holds.
void addFile(const std::string& name, const std::string& content, const RunContext& context,
             FileTree& files, std::vector<std::string>& problems) {
    if (!name.ends_with(".zpki") || content.starts_with("{{")) {
        files[name] = withPlaceholders(content, context, problems);
        return;
    }
    std::string list;
    for (const PackageEntry& entry : readPackage(content, problems)) {
        const std::string text = withPlaceholders(entry.content, context, problems);
        list += entry.name + ' ' + std::to_string(text.size()) + '\n';
        files[name + ".d/" + entry.name] = text;
    }
    files[name + ".list"] = list;
}

/// Takes away what is special about the lines that a program for Windows prints.
void unifyLineEnds(std::string& text, std::vector<std::string>& problems) {
    std::string unified;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\n' && !unified.ends_with('\r')) {
            problems.push_back("a line of the console ends without CR behind: " + unified);
        } else if (text[i] == '\n') {
            unified.pop_back();
        }
        unified += text[i];
    }
    text = unified;
}

RunResult runCommand(const Settings& settings, const Arguments& arguments,
                     const Playground& playground, const RunConditions& conditions,
                     std::vector<std::string>& problems) {
    if (!settings.isForWindows()) {
        return runProgram(settings.program, arguments, playground.work, playground.root,
                          conditions);
    }
    Arguments all = {settings.program.string()};
    all.insert(all.end(), arguments.begin(), arguments.end());
    RunResult result =
        runProgram(settings.launcher, all, playground.work, playground.root, conditions);
    if (!playground.writesFile) {
        unifyLineEnds(result.out, problems);
    }
    unifyLineEnds(result.err, problems);
    return result;
}

/// Runs every command of the case. What is wrong whatever the record says goes to `problems`.
Record runCase(const Settings& settings, const fs::path& caseDir, Playground& playground,
               std::vector<std::string>& problems) {
    Record record;
    const FileTree before = readTree(playground.work);
    RunContext context{secondsNow(),
                       0,
                       userName(),
                       settings.pathOf(playground.work),
                       settings.pathOf(playground.temp),
                       readBytes(caseDir.parent_path().parent_path() / "usage")};
    // A launcher takes more address space than any limit; what is printed must be the same without.
    const RunConditions conditions{std::chrono::steady_clock::now() + settings.timeLimit(),
                                   settings.isForWindows() ? 0 : playground.memoryLimit,
                                   playground.standardInput};
    bool failed = false;
    const std::string commands = readBytes(caseDir / "cmd");
    for (const std::string_view line : splitLines(commands)) {
        const auto arguments = splitCommand(line);
        if (!arguments) {
            problems.push_back("open quote: " + std::string(line));
            continue;
        }
        const RunResult result = runCommand(settings, *arguments, playground, conditions, problems);
        record.out += result.out;
        record.err += result.err;
        record.exit += result.exit + '\n';
        failed = failed || result.exit != "0";
        if (result.exit == "timeout") {
            problems.emplace_back("the program did not end in time");
        }
    }
    if (!failed) {
        record.exit.clear();
    }
    context.end = secondsNow();
    record.out = withPlaceholders(record.out, context, problems);
    record.err = withPlaceholders(record.err, context, problems);

    if (!playground.freeStagingNames()) {
        problems.emplace_back("a foreign directory was used for staging");
    }
    const FileTree after = readTree(playground.work);
    for (const auto& [name, content] : after) {
        const auto old = before.find(name);
        if (old == before.end() || old->second != content) {
            addFile(name, content, context, record.files, problems);
        }
    }
    for (const auto& [name, content] : before) {
        if (!after.contains(name)) {
            record.gone += name + '\n';
        }
    }
    for (const auto& [name, content] : readTree(playground.temp)) {
        record.tempFiles[stagingPlaceholder(name, context, problems)] =
            withPlaceholders(content, context, problems);
    }
    return record;
}

Record readRecord(const fs::path& caseDir) {
    return {readBytes(caseDir / "stdout"), readBytes(caseDir / "stderr"),
            readBytes(caseDir / "exit"),   readBytes(caseDir / "gone"),
            readTree(caseDir / "out"),     readTree(caseDir / "tmp")};
}

void writeRecord(const fs::path& caseDir, const Record& record) {
    writeUnlessEmpty(caseDir / "stdout", record.out);
    writeUnlessEmpty(caseDir / "stderr", record.err);
    writeUnlessEmpty(caseDir / "exit", record.exit);
    writeUnlessEmpty(caseDir / "gone", record.gone);
    writeTree(caseDir / "out", record.files);
    writeTree(caseDir / "tmp", record.tempFiles);
}

/// A line as it can be shown: what is not printable ASCII as a hexadecimal escape.
std::string shown(std::string_view line) {
    constexpr std::size_t kLongestLine = 300;
    std::string text;
    for (const char c : line.substr(0, kLongestLine)) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x20 && byte < 0x7F) {
            text += c;
        } else {
            std::array<char, 8> escape{};
            std::snprintf(escape.data(), escape.size(), "\\x%02x", static_cast<unsigned>(byte));
            text += escape.data();
        }
    }
    return line.size() > kLongestLine ? text + "..." : text;
}

bool compareText(const std::string& what, const std::string& expected, const std::string& actual) {
    if (expected == actual) {
        return true;
    }
    const auto expectedLines = splitLines(expected);
    const auto actualLines = splitLines(actual);
    std::size_t i = 0;
    while (i < expectedLines.size() && i < actualLines.size() &&
           expectedLines[i] == actualLines[i]) {
        ++i;
    }
    const auto lineOf = [i](const std::vector<std::string_view>& lines) {
        return i < lines.size() ? shown(lines[i]) : std::string("(no further line)");
    };
    std::cout << what << " differs in line " << i + 1 << "\n  expected: " << lineOf(expectedLines)
              << "\n  actual:   " << lineOf(actualLines) << '\n';
    if (i == expectedLines.size() && i == actualLines.size()) {
        std::cout << "  (only the end of the last line differs)\n";
    }
    return false;
}

bool compareTree(const std::string& what, const FileTree& expected, const FileTree& actual) {
    bool same = true;
    for (const auto& [name, content] : expected) {
        const auto found = actual.find(name);
        if (found == actual.end()) {
            std::cout << what << name << " is missing\n";
            same = false;
        } else {
            same = compareText(what + name, content, found->second) && same;
        }
    }
    for (const auto& [name, content] : actual) {
        if (!expected.contains(name)) {
            std::cout << what << name << " was not expected (" << content.size() << " bytes)\n";
            same = false;
        }
    }
    return same;
}

bool compareRecords(const Record& expected, const Record& actual) {
    bool same = compareText("stdout", expected.out, actual.out);
    same = compareText("stderr", expected.err, actual.err) && same;
    same = compareText("exit", expected.exit, actual.exit) && same;
    same = compareText("gone", expected.gone, actual.gone) && same;
    same = compareTree("out/", expected.files, actual.files) && same;
    return compareTree("tmp/", expected.tempFiles, actual.tempFiles) && same;
}

/// A case that could be recorded has passed.
Outcome checkCase(const Settings& settings, const fs::path& caseDir) {
    if (!fs::exists(caseDir / "cmd")) {
        std::cout << caseDir.string() << ": no case\n";
        return Outcome::Failed;
    }
    if (settings.isForWindows() && fs::exists(caseDir / "windows")) {
        std::cout << caseDir.string() << ": not on Windows: " << readBytes(caseDir / "windows");
        return Outcome::Skipped;
    }
    std::vector<std::string> problems;
    Record actual;
    {
        Playground playground;
        playground.setVariable("TMPDIR", playground.temp);
        if (!setUp(caseDir, playground)) {
            return Outcome::Failed;
        }
        if (playground.memoryLimit != 0 && kHasAddressSanitizer) {
            std::cout << caseDir.string() << ": passed over, a sanitizer has no memory limit\n";
            return Outcome::Passed;
        }
        actual = runCase(settings, caseDir, playground, problems);
    }
    for (const std::string& problem : problems) {
        std::cout << problem << '\n';
    }
    if (settings.update) {
        writeRecord(caseDir, actual);
        return problems.empty() ? Outcome::Passed : Outcome::Failed;
    }
    return compareRecords(readRecord(caseDir), actual) && problems.empty() ? Outcome::Passed
                                                                           : Outcome::Failed;
}

int runCases(const std::vector<std::string_view>& arguments) {
    Settings settings;
    std::vector<fs::path> cases;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i] == "--update") {
            settings.update = true;
        } else if (arguments[i] == "--program" && i + 1 < arguments.size()) {
            ++i;
            settings.program = fs::absolute(arguments[i]);
        } else if (arguments[i] == "--windows" && i + 1 < arguments.size()) {
            ++i;
            settings.launcher = fs::absolute(arguments[i]);
        } else {
            cases.emplace_back(arguments[i]);
        }
    }
    if (settings.program.empty() || cases.empty()) {
        std::cout << "usage: golden_runner --program FILE [--windows FILE] [--update] CASE...\n";
        return 2;
    }
    std::size_t failures = 0;
    std::size_t skipped = 0;
    for (const fs::path& caseDir : cases) {
        const Outcome outcome = checkCase(settings, fs::absolute(caseDir));
        skipped += outcome == Outcome::Skipped ? 1 : 0;
        if (outcome == Outcome::Failed) {
            std::cout << "FAILED " << caseDir.string() << '\n';
            ++failures;
        }
    }
    if (failures != 0) {
        return 1;
    }
    return skipped == cases.size() ? kSkipped : 0;
}

}  // namespace
}  // namespace quillmark::golden

int main(int argc, char** argv) {
    return quillmark::golden::runCases({argv + 1, argv + argc});
}
