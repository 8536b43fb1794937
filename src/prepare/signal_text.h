#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "prepare/block_walk.h"
#include "prepare/expansion.h"

namespace quillmark::preparing {

/// An OVERWRITE of an instance.
struct Overwrite {
    std::string path;
    std::int64_t axis;  ///< 0 is the value
    std::vector<WrittenPart> parts;
    std::size_t position;  ///< in the text of the instance
    bool isUsed = false;
};

/// What the block of an INSTANCE says besides its type and address.
struct InstanceText {
    std::string name;
    std::string text;  ///< the long identifier, in quotes
    std::vector<WrittenPart> parts;
    std::vector<Overwrite> overwrites;

    /// Takes it from a block that has been taken apart.
    static InstanceText read(BlockWalk& walk);
};

/// Writes the signals that an instance becomes as blocks of version 1.6.
class SignalText {
  public:
    SignalText(const ExpansionOptions& options, const Member& instance, InstanceText& text)
        : options_(options), instance_(instance), text_(text) {}

    /// Takes note that a part of the instance is lost; an OVERWRITE of it is no mistake then.
    void lose(const PartName& name);

    /// The block, without indentation and line feed.
    std::string write(const Leaf& leaf);

    /// What of the overwrites had no place in a block that was written.
    [[nodiscard]] const std::vector<std::string>& misplaced() const { return misplaced_; }

  private:
    std::string name(const Leaf& leaf) const;
    std::string address(const Leaf& leaf) const;
    [[nodiscard]] bool means(const Overwrite& overwrite, const PartName& name) const;
    void collectOverwrites(const Leaf& leaf);
    [[nodiscard]] std::string_view overwritten(std::string_view keyword, std::int64_t axis,
                                               Type::Kind kind) const;
    void writeHead(const Leaf& leaf, std::string& block) const;
    void writeTypeParts(const Leaf& leaf, std::string& block);
    void writeInstanceParts(const Leaf& leaf, std::string& block) const;
    void writeOverwrites(const Leaf& leaf, std::string& block);
    std::string axisText(const Leaf& leaf, const WrittenPart& part, std::int64_t axis) const;
    std::string withThis(const Leaf& leaf, std::string_view text) const;
    std::string resolveThis(const Leaf& leaf, std::string_view word) const;

    const ExpansionOptions& options_;
    const Member& instance_;
    InstanceText& text_;
    /// Of the signal that is being written.
    std::vector<const Overwrite*> overwrites_;
    std::vector<std::string> misplaced_;
};

/// An interface block of a signal that lies so many bytes behind `start`, or behind the address
/// that stands there: CCP tells it once more, and the reader prefers that.
std::string movedInterface(const std::string& text, std::optional<std::int64_t> start,
                           std::int64_t offset);

/// A DISPLAY_IDENTIFIER for a part of what it stands for. A name gets the part's suffix, or the
/// text that is written in its place; what is neither stays as it is.
std::string withSuffix(std::string_view displayIdentifier, std::string_view suffix);

/// A SYMBOL_LINK to something so many bytes behind the symbol that it tells.
std::string movedSymbol(std::string_view symbolLink, std::int64_t offset);

/// An address as descriptions have it: modulo 2^32, unless it is beyond that from the start.
std::string addressText(std::int64_t start, std::int64_t offset);

}  // namespace quillmark::preparing
