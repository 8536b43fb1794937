#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include <rapidjson/writer.h>

#include "platform/output_sink.h"

namespace quillmark::a2ltool {

/// The stream of bytes that RapidJSON's writer expects, on top of a sink. It gathers a few, as the
/// writer hands them over one by one.
class SinkStream {
  public:
    using Ch = char;

    explicit SinkStream(OutputSink& sink) : sink_(sink) {}

    // The names are RapidJSON's.
    void Put(char byte) {
        if (used_ == buffer_.size()) {
            Flush();
        }
        buffer_[used_++] = byte;
    }
    void Flush() {
        sink_.write({buffer_.data(), used_});
        used_ = 0;
    }

  private:
    OutputSink& sink_;
    std::array<char, 4096> buffer_;
    std::size_t used_ = 0;
};

/// Writes JSON as a stream: nothing of it is kept. Names and texts of descriptions become UTF-8.
class JsonWriter {
  public:
    /// The sink outlives the writer and is finished by its owner.
    explicit JsonWriter(OutputSink& sink) : stream_(sink), writer_(stream_) {}

    void startObject() { writer_.StartObject(); }
    void endObject() { writer_.EndObject(); }
    void startArray() { writer_.StartArray(); }
    void endArray() { writer_.EndArray(); }
    void key(std::string_view name) { text(name); }
    void startObject(std::string_view name) {
        key(name);
        startObject();
    }
    void startArray(std::string_view name) {
        key(name);
        startArray();
    }

    void text(std::string_view bytes);
    void integer(std::int64_t value) { writer_.Int64(value); }

    /// The infinities are the texts "Infinity" and "-Infinity".
    void real(double value);
    void boolean(bool value) { writer_.Bool(value); }
    void null() { writer_.Null(); }

    void textMember(std::string_view name, std::string_view bytes) {
        key(name);
        text(bytes);
    }
    void integerMember(std::string_view name, std::int64_t value) {
        key(name);
        integer(value);
    }
    void booleanMember(std::string_view name, bool value) {
        key(name);
        boolean(value);
    }

    /// Ends the line, behind which another document may follow.
    void endDocument();

  private:
    SinkStream stream_;
    rapidjson::Writer<SinkStream> writer_;
};

}  // namespace quillmark::a2ltool
