#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "prepare/description_scanner.h"
#include "prepare/expansion.h"
#include "prepare/part_writer.h"

namespace quillmark::preparing {

/// What is to be done besides what has to be.
struct RewriteOptions {
    ExpansionOptions expansion;
    bool latin1 = false;
    std::string epk;         ///< as it stands between quotes; empty for none
    std::string epkAddress;  ///< empty for none
    std::string module;      ///< the one that gets them; empty for the only one
};

/// Copies a description and changes what has to be changed.
class Rewriter {
  public:
    /// `map` may be nullptr.
    Rewriter(SourceText& source, Report& report, const Survey& survey,
             const RewriteOptions& options, Output& output, LineMap* map);

    /// Copies all of it. Errors are in the report.
    void run();

  private:
    void beginText();
    bool rewritePart(const Part& part);
    void rewriteVersion(const Part& part);
    void rememberVersion(std::string_view minor, Place place);
    void beginModule(const Part& part);
    void takeOutStray(const Part& part);
    void rewriteBlock(Part part);
    static const PartRule* findBlock(const Part& part);
    void mendVersionBlock(const Part& part);
    void walkBlock(const Part& part, const PartRule& rule);
    void takeOutLaterBlock(const Part& part, std::string_view text);
    void tellOddities(const Part& part);

    void rewriteMeasurement(const Part& part);
    void rewriteCharacteristic(const Part& part);
    void rewriteFunction(const Part& part);
    void rewriteNames(const Part& part);
    void addEpk(const Part& part);
    std::optional<std::string> epkText(bool hasEpk, bool hasAddress) const;
    bool takeOutLaterWord(const Part& part, const FoundPart& found);
    void checkName(const Part& part, std::string_view name);

    void expandInstance(const Part& part);
    void rewriteBlob(const Part& part);

    [[nodiscard]] const ModuleSurvey& module() const {
        return module_ <= survey_.modules.size() ? survey_.modules[module_ - 1] : unknown_;
    }

    SourceText& source_;
    Report& report_;
    const Survey& survey_;
    /// What is known of a module where nothing had to be known.
    ModuleSurvey unknown_;
    const RewriteOptions& options_;
    Output& output_;
    PartWriter writer_;
    DescriptionScanner scanner_;
    BlockWalk walk_;
    /// The number of the module that is being copied, from 1.
    std::size_t module_ = 0;
    std::size_t nextInstance_ = 0;
    bool hasProject_ = false;
    bool hasPutEpk_ = false;

    /// Where the minor number of ASAP2_VERSION went, and what has to stand there in the end.
    std::uint64_t versionPosition_ = 0;
    std::string version_;
    Place versionPlace_;
    bool hasLaterParts_ = false;
};

}  // namespace quillmark::preparing
