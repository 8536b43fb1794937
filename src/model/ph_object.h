#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "model/class_codes.h"
#include "model/model_memory.h"
#include "model/ph_string.h"

namespace quillmark {

/// Base of every model object: a counted, named object with a class code. Objects are shared
/// through PhHandle and die with their last handle; counts are plain integers, as each model is for
/// one thread at a time.
class PhObject : public InModelMemory {
  public:
    explicit PhObject(PhClass kind);
    PhObject(const PhObject&) = delete;
    PhObject& operator=(const PhObject&) = delete;
    virtual ~PhObject();

    PhClass kind() const { return kind_; }
    std::int32_t refCount() const { return refCount_; }

    /// Serial number of the object within the thread that made it, in order of construction.
    std::uint32_t objectId() const { return objectId_; }

    const PhString& name() const { return name_; }
    void setName(PhString name) { name_ = std::move(name); }

    const PhString& longIdentifier() const { return longIdentifier_; }
    void setLongIdentifier(PhString text) { longIdentifier_ = std::move(text); }

    void addRef() { ++refCount_; }

    /// Gives up one reference. The object is destroyed when none is left, also when there was none
    /// to give up: an object that no handle ever took dies at its first release.
    void release();

    /// A placeholder stands for an object that a reference names and that is not defined yet.
    bool isPlaceholder() const { return (flags_ & kPlaceholder) != 0; }
    void markPlaceholder() { flags_ |= kPlaceholder; }
    void markDefined() { flags_ &= static_cast<std::uint8_t>(~kPlaceholder); }

    /// An unresolved object is a placeholder whose definition was found nowhere.
    bool isUnresolved() const { return (flags_ & kUnresolved) != 0; }
    void markUnresolved() { flags_ |= kUnresolved; }

    /// The object's two lists of free texts.
    std::vector<PhString>& texts(std::size_t list);

  private:
    static constexpr std::uint8_t kPlaceholder = 1;
    static constexpr std::uint8_t kUnresolved = 2;

    // The name and the count stand together, as looking an object up takes both. The small members
    // come last: those of a derived class go on in the room behind them.
    PhString name_;
    std::int32_t refCount_ = 0;
    std::uint32_t objectId_;
    PhString longIdentifier_;
    std::unique_ptr<std::array<std::vector<PhString>, 2>> texts_;  ///< only where used
    PhClass kind_;
    std::uint8_t flags_ = 0;
};

/// Counted pointer to a model object; may be empty.
template <typename T>
class PhHandle {
  public:
    PhHandle() = default;
    explicit PhHandle(T* object) : object_(object) { acquire(); }
    PhHandle(const PhHandle& other) : object_(other.object_) { acquire(); }
    PhHandle(PhHandle&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    PhHandle& operator=(PhHandle other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~PhHandle() {
        if (object_ != nullptr) {
            object_->release();
        }
    }

    T* get() const { return object_; }
    T* operator->() const { return object_; }
    T& operator*() const { return *object_; }
    explicit operator bool() const { return object_ != nullptr; }

    friend bool operator==(const PhHandle& left, const PhHandle& right) {
        return left.object_ == right.object_;
    }

  private:
    void acquire() {
        if (object_ != nullptr) {
            object_->addRef();
        }
    }

    T* object_ = nullptr;
};

/// Creates a model object and its first handle.
template <typename T, typename... Arguments>
PhHandle<T> makePh(Arguments&&... arguments) {
    return PhHandle<T>(new T(std::forward<Arguments>(arguments)...));
}

}  // namespace quillmark
