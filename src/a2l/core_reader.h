#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "a2l/module_references.h"
#include "a2l/reader/block_reader.h"
#include "a2l/reader/block_rules.h"
#include "a2l/text_pool.h"
#include "model/enumerations.h"
#include "model/module_model.h"
#include "model/ph_object.h"
#include "model/ph_object_list.h"
#include "model/ph_string.h"
#include "model/signal_model.h"

namespace quillmark {

/// What the parsers of core blocks work with: tokens and their expectations like all parsers, and
/// besides what other blocks of the file are to know, such as the names of the module being read.
class CoreReader : public BlockReader {
  public:
    using BlockReader::BlockReader;

    /// Measurements that ended in an error during the last parse.
    std::int32_t errorCount() const { return errorCount_; }
    void countError() { ++errorCount_; }

    /// The byte order of MOD_COMMON, the default for the signals and protocols that follow it.
    PhByteOrder moduleByteOrder() const { return moduleByteOrder_; }
    void keepModuleByteOrder(PhByteOrder byteOrder) { keep(moduleByteOrder_, byteOrder); }

    /// What the blocks of the module being read refer to by name; there is none outside a module.
    ModuleReferences& references() { return *references_; }

    /// ModuleReferences::define() for a block whose name is the next token, as it should be: else
    /// the error "Identifier expected", and an object without a name.
    template <typename T>
    PhHandle<T> defineNext() {
        return expectIdentifier() ? references().define<T>(token().text) : makePh<T>();
    }

    /// Adds what a module describes beside its protocols to its list, if the model gets it.
    template <typename T>
    void keepDescribed(PhObjectList<T>& list, const PhHandle<T>& object) {
        if (parts().signals) {
            keepIn(list, object);
        }
    }

    /// ModuleReferences::refer().
    template <typename T>
    PhHandle<T> refer(std::string_view name) {
        return references().refer<T>(name);
    }

    /// As long as it lives, a module is being read.
    class ModuleScope {
      public:
        ModuleScope(CoreReader& reader, PhGroup& module) : reader_(reader) {
            reader_.references_.emplace(module, reader.parts());
        }
        ModuleScope(const ModuleScope&) = delete;
        ModuleScope& operator=(const ModuleScope&) = delete;
        ~ModuleScope() { reader_.references_.reset(); }

      private:
        CoreReader& reader_;
    };

    /// The block of the module that is being read, or in which the parse has failed: its keyword,
    /// or TOK_EOF between the blocks.
    int moduleBlock() const { return moduleBlock_; }
    void setModuleBlock(int keyword) { moduleBlock_ = keyword; }

    /// The unit of that display text. Thousands of conversion methods share some dozens of them.
    /// None if the model gets no conversions.
    PhHandle<PhUnit> inlineUnit(std::string_view text);

    /// A display format, which need not be quoted; null where there is none, or if the model gets
    /// no formats.
    PhString readFormat();

    /// A text of a conversion that others may repeat; null if the model gets none of them.
    PhString shareText(std::string_view text) {
        return parts().signals ? texts_.share(text) : PhString();
    }

  protected:
    /// Is called before the file is looked for: a parse that can't start leaves nothing of the one
    /// before, either.
    void startOver();

  private:
    std::int32_t errorCount_ = 0;
    PhByteOrder moduleByteOrder_ = PhByteOrder::Undefined;
    int moduleBlock_ = TOK_EOF;
    std::optional<ModuleReferences> references_;
    PhObjectList<PhUnit> inlineUnits_;
    TextPool texts_;
};

/// A row about an optional part of a core block.
template <typename Context>
using CoreRule = Rule<CoreReader, Context>;

}  // namespace quillmark
