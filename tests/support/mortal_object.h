#pragma once

#include "model/ph_object.h"

namespace quillmark {

/// A model object that counts its deaths in a counter of the test's.
class MortalObject final : public PhObject {
  public:
    explicit MortalObject(int& deaths, PhClass kind = PhClass::Method)
        : PhObject(kind), deaths_(deaths) {}
    ~MortalObject() override { ++deaths_; }

  private:
    int& deaths_;
};

}  // namespace quillmark
