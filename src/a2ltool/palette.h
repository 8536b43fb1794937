#pragma once

#include <string_view>

namespace quillmark::a2ltool {

/// The colours of a terminal, or nothing in their place.
class Palette {
  public:
    explicit Palette(bool colored) : colored_(colored) {}

    std::string_view strong() const { return colored_ ? "\033[1m" : ""; }
    std::string_view error() const { return colored_ ? "\033[1;31m" : ""; }
    std::string_view warning() const { return colored_ ? "\033[1;35m" : ""; }
    std::string_view note() const { return colored_ ? "\033[1;36m" : ""; }
    std::string_view good() const { return colored_ ? "\033[1;32m" : ""; }
    std::string_view plain() const { return colored_ ? "\033[0m" : ""; }

  private:
    bool colored_;
};

}  // namespace quillmark::a2ltool
