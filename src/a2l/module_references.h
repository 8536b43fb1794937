#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "a2l/reader/ph_reader.h"
#include "a2l/resolution.h"
#include "model/module_model.h"
#include "model/ph_object.h"
#include "model/ph_object_list.h"
#include "model/ph_string.h"
#include "model/signal_model.h"
#include "platform/equal_texts.h"

namespace quillmark {

/// Names between their text and their objects, each with the object that refers to it, kept until
/// there are enough of them to be looked up together (PhObjectList::prepareToFind).
template <typename Referrer>
class WaitingNames {
  public:
    bool isFull() const { return referrers_.size() == ends_.size(); }

    /// Adds a copy of a name; not to a full batch.
    void add(Referrer& referrer, std::string_view name) {
        text_ += name;
        ends_[referrers_.size()] = text_.size();
        referrers_.push_back(PhHandle<Referrer>(&referrer));
    }

    /// Hands the names over in the order in which they came, and is empty afterwards: first all of
    /// them to `prepare(names)`, then each to `bind(referrer, name)`.
    template <typename Prepare, typename Bind>
    void handOver(Prepare prepare, Bind bind) {
        std::array<std::string_view, kCapacity> names;
        std::size_t begin = 0;
        for (std::size_t i = 0; i < referrers_.size(); ++i) {
            names[i] = std::string_view(text_).substr(begin, ends_[i] - begin);
            begin = ends_[i];
        }
        prepare(std::span<const std::string_view>(names.data(), referrers_.size()));
        for (std::size_t i = 0; i < referrers_.size(); ++i) {
            bind(*referrers_[i], names[i]);
        }
        text_.clear();
        referrers_.clear();
    }

  private:
    static constexpr std::size_t kCapacity = PhNameIndex::kMostTogether;

    std::string text_;  ///< all of them, without anything in between
    std::array<std::size_t, kCapacity> ends_{};
    std::vector<PhHandle<Referrer>> referrers_;
};

/// What the blocks of one module refer to by name, from its beginning to its end. A name that is
/// not defined yet gets a placeholder, one per name, shared by all that refer to it. Names that
/// come in great numbers wait here until some of them can be looked up together; whichever still
/// wait when the module ends are bound then, and the module learns whether anything is left for
/// resolve().
class ModuleReferences {
  public:
    /// `module` outlives it. For parts that the model does not get, nothing is looked up or bound.
    ModuleReferences(PhGroup& module, const ModelParts& parts) : module_(module), parts_(parts) {}
    ModuleReferences(const ModuleReferences&) = delete;
    ModuleReferences& operator=(const ModuleReferences&) = delete;
    ~ModuleReferences();

    /// Whether the module has a signal of that name by now.
    bool hasSignal(std::string_view name) const { return module_.signals.find(name) != nullptr; }

    /// What `name` refers to: the object if it is defined already, otherwise its placeholder; empty
    /// if the model gets neither.
    template <typename T>
    PhHandle<T> refer(std::string_view name) {
        if (!parts_.signals) {
            return {};
        }
        auto& kind = std::get<Kind<T>>(kinds_);
        if (T* defined = findInScope(&module_, kind.defined, name)) {
            return PhHandle<T>(defined);
        }
        if (T* placeholder = kind.placeholders.find(name)) {
            return PhHandle<T>(placeholder);
        }
        auto placeholder = makePh<T>();
        placeholder->setName(PhString(name));
        placeholder->markPlaceholder();
        ++openPlaceholders_;
        kind.placeholders.append(placeholder);
        return placeholder;
    }

    /// The object that a block of that name defines. Its placeholder, if there is one, becomes that
    /// object: whatever referred to it is bound by that, and millions of names that stand before
    /// their definitions cost no second object each.
    template <typename T>
    PhHandle<T> define(std::string_view name) {
        if (T* placeholder = std::get<Kind<T>>(kinds_).placeholders.find(name);
            placeholder != nullptr && placeholder->isPlaceholder()) {
            placeholder->markDefined();
            --openPlaceholders_;
            return PhHandle<T>(placeholder);
        }
        auto object = makePh<T>();
        object->setName(PhString(name));
        return object;
    }

    /// Makes the conversion of that name the signal's, by the end of the module.
    void bindConversionSoon(PhEntity& signal, std::string_view name) {
        if (!parts_.signals) {
            return;
        }
        const std::uint32_t hash = PhNameIndex::hashOf(name);
        const RecentConversion& recent = recentConversion(hash);
        if (recent.isNamed(name, hash)) {
            signal.datatype.conversion = recent.conversion;
            return;
        }
        if (conversions_.isFull()) {
            bindConversions();
        }
        conversions_.add(signal, name);
    }

    /// Adds the signal of that name to the members of a group or function, by the end of the
    /// module. Their lists may name all signals of a unit, and in any order, so most of the time of
    /// reading them would go into waiting for memory.
    void bindMemberSoon(PhFunction& function, std::string_view name) {
        if (!parts_.members) {
            return;
        }
        if (members_.isFull()) {
            bindMembers();
        }
        members_.add(function, name);
    }

    /// Adds the object of that name to a list of members.
    template <typename T>
    void appendMember(PhObjectList<T>& members, std::string_view name) {
        if (parts_.members) {
            members.append(refer<T>(name));
        }
    }

  private:
    /// Where a module keeps what it defines, and here its placeholders, for each type of object.
    template <typename T>
    struct Kind {
        PhObjectList<T> PhGroup::*defined;
        PhObjectList<T> placeholders{};
    };
    using Kinds = std::tuple<Kind<PhConversion>, Kind<PhUnit>, Kind<PhRecordLayout>, Kind<PhEntity>,
                             Kind<PhFunction>>;

    void bindConversions();
    void bindMembers();

    /// A conversion that was bound lately. What a name refers to stays the same to the end of the
    /// module, and a few conversions serve most signals. The hash stands beside it, so that another
    /// one is not fetched from memory only to see that it is another one.
    struct RecentConversion {
        std::uint32_t hash = 0;
        PhHandle<PhConversion> conversion;

        bool isNamed(std::string_view name, std::uint32_t nameHash) const {
            return hash == nameHash && conversion && equalTexts(conversion->name().view(), name);
        }
    };

    /// The one place where a conversion of a name with that hash may be.
    RecentConversion& recentConversion(std::uint32_t hash) {
        return recentConversions_[hash % recentConversions_.size()];
    }

    PhGroup& module_;
    ModelParts parts_;
    Kinds kinds_{Kind<PhConversion>{&PhGroup::conversions}, Kind<PhUnit>{&PhGroup::units},
                 Kind<PhRecordLayout>{&PhGroup::recordLayouts}, Kind<PhEntity>{&PhGroup::signals},
                 Kind<PhFunction>{&PhGroup::functions}};
    std::size_t openPlaceholders_ = 0;  ///< how many placeholders are not defined yet
    WaitingNames<PhEntity> conversions_;
    WaitingNames<PhFunction> members_;
    static constexpr std::size_t kRecentConversions = 256;
    std::array<RecentConversion, kRecentConversions> recentConversions_;
};

}  // namespace quillmark
