#include "a2ltool/json_writer.h"

#include <cmath>
#include <string>

#include "a2ltool/utf8.h"

namespace quillmark::a2ltool {
namespace {

/// JSON has no numbers for the infinities. Not all readers take a number beyond all doubles.
constexpr std::string_view kInfinite = "Infinity";
constexpr std::string_view kNegativeInfinite = "-Infinity";

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
    text(value > 0 ? kInfinite : kNegativeInfinite);
}

void JsonWriter::endDocument() {
    stream_.Put('\n');
    stream_.Flush();
    writer_.Reset(stream_);
}

}  // namespace quillmark::a2ltool
