#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "quillmark/prepare.h"

namespace quillmark::preparing {

/// A line of one of the files that are read. `file` is its number in the report, from 0.
struct Place {
    std::uint32_t file = 0;
    std::uint32_t line = 0;

    friend bool operator==(const Place&, const Place&) = default;
};

/// Takes what is found, and knows what it comes to. Nothing is told after an error, which ends the
/// work.
class Report {
  public:
    explicit Report(PrepareFindingHandler tell) : tell_(std::move(tell)) {}

    /// The number of a file of this name.
    std::uint32_t fileNumber(const std::string& name);
    [[nodiscard]] const std::string& fileName(std::uint32_t number) const { return files_[number]; }

    /// The same as text, as in messages.
    [[nodiscard]] std::string textOf(Place place) const;

    /// Something that was asked for, or that a reader cannot know of: an include, an encoding.
    void note(Place place, std::string_view text);

    // What the reader would refuse. It is asked once whether it does.
    void change(Place place, std::string_view text);
    void loss(Place place, std::string_view text);
    void error(Place place, std::string_view text);

    /// An error about no line of a file.
    void error(std::string_view file, std::string_view text);

    /// From now on nothing is told: the first thing that is found ends the work.
    void beginTrial() { isTrial_ = true; }

    /// Begins anew, as if nothing had been tried. Returns whether nothing was found.
    bool endTrial();

    /// Ends a trial that will hardly come to its end without a finding.
    void giveUpTrial() { hasFailed_ |= isTrial_; }

    /// Who tells whether the reader takes the description as it is.
    void setReader(std::function<bool()> reads) { reads_ = std::move(reads); }

    /// Says that the description is more than the reader sees of it, or has what it surely refuses.
    /// Nobody asks it then.
    void forgetReader();

    /// Whether the work is to end: after an error, or because nothing needs to be done.
    [[nodiscard]] bool hasFailed() const { return hasFailed_ || isReadable_; }

    /// Whether the description can be read as it is, although something seemed to be wrong with it.
    [[nodiscard]] bool isReadable() const { return isReadable_; }
    [[nodiscard]] bool hasErrors() const { return hasFailed_; }
    [[nodiscard]] bool hasLosses() const { return hasLosses_; }
    [[nodiscard]] bool hasChanges() const { return hasChanges_; }

  private:
    [[nodiscard]] bool isRefused();
    void tell(PrepareFinding::Kind kind, std::string_view file, std::uint32_t line,
              std::string_view text);

    PrepareFindingHandler tell_;
    std::vector<std::string> files_;
    std::function<bool()> reads_;
    bool isTrial_ = false;
    bool isReadable_ = false;
    bool hasFailed_ = false;
    bool hasLosses_ = false;
    bool hasChanges_ = false;
};

}  // namespace quillmark::preparing
