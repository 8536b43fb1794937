#include "a2ltool/json_writer.h"

#include <cmath>
#include <string>

#include "a2ltool/utf8.h"

namespace quillmark::a2ltool {
namespace {

/// JSON has no words for the infinities, but numbers of any size.
constexpr std::string_view kInfinite = "1e999";
constexpr std::string_view kNegativeInfinite = "-1e999";

}  // namespace

void JsonWriter::text(std::string_view bytes) {
    if (isUtf8(bytes)) {
        writer_.String(bytes.data(), static_cast<rapidjson::SizeType>(bytes.size()));
        return;
    }
    const std::string utf8 = toUtf8(bytes);
    writer_.String(utf8.data(), static_cast<rapidjson::SizeType>(utf8.size()));
}

void JsonWriter::real(double value) {
    if (std::isfinite(value)) {
        writer_.Double(value);
        return;
    }
    if (std::isnan(value)) {
        null();
        return;
    }
    const std::string_view number = value > 0 ? kInfinite : kNegativeInfinite;
    writer_.RawValue(number.data(), number.size(), rapidjson::kNumberType);
}

void JsonWriter::endDocument() {
    stream_.Put('\n');
    stream_.Flush();
    writer_.Reset(stream_);
}

}  // namespace quillmark::a2ltool
