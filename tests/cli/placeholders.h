#pragma once

#include <ctime>
#include <string>
#include <string_view>
#include <vector>

namespace quillmark::golden {

/// What a run may put into its output without it being the same every time.
struct RunContext {
    /// The seconds since 1970 between which the program ran.
    std::time_t start = 0;
    std::time_t end = 0;
    std::string userName;
    /// Absolute paths of the working directory and of the directory for temporary files.
    std::string workDir;
    std::string tempDir;
    /// The usage text, which is recorded once.
    std::string usage = {};
};

/// Puts placeholders where a text differs from run to run: {{LOCAL_TIME}}, {{UNIX_TIME}}, {{USER}},
/// {{STAGING}}, {{TMP}} and {{WORK}}; and {{USAGE}} for the usage text, so that it is recorded
/// once. Every text that gives way is checked first: a time must lie within the run and have the
/// right form, a user must be the one who runs the program. What is wrong stays in the text and
/// adds a line to `problems`.
std::string withPlaceholders(std::string_view text, const RunContext& context,
                             std::vector<std::string>& problems);

/// The name that a staging directory gets at an instant, from the local time.
std::string stagingName(std::time_t instant);

/// A path inside the directory for temporary files, its staging directory replaced by {{STAGING}}.
std::string stagingPlaceholder(std::string_view path, const RunContext& context,
                               std::vector<std::string>& problems);

}  // namespace quillmark::golden
