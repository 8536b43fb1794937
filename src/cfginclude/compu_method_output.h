#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "cfginclude/cfg_children.h"
#include "cfginclude/library_versions.h"
#include "model/ph_object_list.h"
#include "model/ph_string.h"
#include "model/signal_model.h"
#include "platform/equal_texts.h"

namespace quillmark {

/// Conversions of one module that are written as identity because the logger cannot represent them
/// (or because they are the identity). No signal refers to them. They are kept under their own
/// names, without the prefix that all full names share.
class IdentityFallbackNames {
  public:
    /// Notes every such conversion of the list, which has to outlive this object.
    IdentityFallbackNames(const PhObjectList<PhConversion>& conversions,
                          const LibraryFeatures& features);

    bool contains(std::string_view conversionName) const;

  private:
    auto hasName(std::string_view name) const {
        return [this, name](std::uint32_t at) { return equalTexts(names_[at].view(), name); };
    }

    std::vector<PhString> names_;
    PhNameIndex index_;  ///< asked once for every signal
};

/// Adds the element that tells the logger how to turn a raw value into a physical one:
/// `scaleoffset`, `ratfunc`, `computab` or `vtab`. A table object ("TAB::") adds nothing: it is
/// reached through the methods that name it. The full name is `namePrefix` followed directly by the
/// conversion's name.
void writeCompuMethod(CfgChildren& parent, const PhConversion& conversion,
                      std::string_view namePrefix, const LibraryFeatures& features);

}  // namespace quillmark
