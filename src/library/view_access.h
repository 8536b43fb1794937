#pragma once

#include <optional>
#include <string_view>

#include "library/description_data.h"
#include "model/ph_object.h"
#include "model/ph_string.h"
#include "model/ph_value.h"
#include "quillmark/list.h"
#include "quillmark/number.h"

namespace quillmark {

/// The way from the model to its views, which nobody else has.
struct ViewAccess {
    static const DescriptionData* data(const Description& description) {
        return description.data_.get();
    }

    template <typename View, typename Object>
    static View view(const Object& object) {
        return View(&object);
    }

    /// Nothing for an empty handle.
    template <typename View, typename Object>
    static std::optional<View> viewIfAny(const PhHandle<Object>& handle) {
        return viewIfAny<View>(handle.get());
    }
    template <typename View, typename Object>
    static std::optional<View> viewIfAny(const Object* object) {
        return object == nullptr ? std::nullopt : std::optional<View>(View(object));
    }

    /// `list` is of the type that list.cpp names for the items.
    template <typename Item>
    static List<Item> list(const void* list) {
        return List<Item>(list);
    }
};

inline Number numberOf(const PhNumber& number) {
    if (number.isInteger()) {
        return Number::ofInteger(number.exactInteger());
    }
    return number.isReal() ? Number::ofReal(number.toReal()) : Number();
}

inline Number numberOf(const PhHandle<PhValue>& value) {
    return value ? numberOf(value->number()) : Number();
}

inline std::optional<std::string_view> textIfAny(const PhString& text) {
    return text.isNull() ? std::nullopt : std::optional(text.view());
}

/// The settings in a bag; none for an empty handle.
inline List<Setting> settingsOf(const PhHandle<PhProperties>& properties) {
    return properties ? ViewAccess::list<Setting>(&properties->values()) : List<Setting>();
}

}  // namespace quillmark
