#include "a2l/description.h"

#include "a2l/ph_a2l.h"
#include "a2l/resolution.h"

namespace quillmark {

bool readDescription(const std::string& fileName, PhRoot& model, Console& console) {
    PhA2l reader(console, fileName);
    reader.setKeepLongIdentifiers(false);
    return reader.parse(model) == 0 && resolve(model) == 0;
}

}  // namespace quillmark
