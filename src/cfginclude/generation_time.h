#pragma once

#include <cstdint>
#include <string>

namespace quillmark {

/// The instant of a generation in the two forms that an include file carries.
struct GenerationTime {
    std::int64_t secondsSinceEpoch = 0;  ///< since 1970-01-01T00:00:00 UTC
    /// Local time as "2017-06-01T14:05:09+02:00". A time zone that is not ahead of UTC has a minus
    /// sign, also UTC itself ("-00:00").
    std::string localStamp;
};

GenerationTime currentGenerationTime();

/// The same for a given instant in a time zone `utcOffset` seconds ahead of UTC.
GenerationTime generationTimeAt(std::int64_t secondsSinceEpoch, std::int32_t utcOffset);

}  // namespace quillmark
