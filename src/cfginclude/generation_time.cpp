#include "cfginclude/generation_time.h"

#include <QDateTime>
#include <QTimeZone>
#include <chrono>
#include <cstdlib>

#include "platform/time_zone.h"

namespace quillmark {

namespace {

GenerationTime describe(const QDateTime& local) {
    constexpr int kSecondsPerMinute = 60;
    constexpr int kMinutesPerHour = 60;
    const int offset = local.offsetFromUtc();
    const int minutes = std::abs(offset) / kSecondsPerMinute;
    const QString stamp = QStringLiteral("%1%2%3:%4")
                              .arg(local.toString(QStringLiteral("yyyy-MM-dd'T'HH:mm:ss")))
                              .arg(QLatin1Char(offset > 0 ? '+' : '-'))
                              .arg(minutes / kMinutesPerHour, 2, 10, QLatin1Char('0'))
                              .arg(minutes % kMinutesPerHour, 2, 10, QLatin1Char('0'));
    return {local.toSecsSinceEpoch(), stamp.toStdString()};
}

}  // namespace

GenerationTime currentGenerationTime() {
    const std::int64_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    return generationTimeAt(now, utcOffsetAt(now));
}

GenerationTime generationTimeAt(std::int64_t secondsSinceEpoch, std::int32_t utcOffset) {
    return describe(QDateTime::fromSecsSinceEpoch(secondsSinceEpoch, QTimeZone(utcOffset)));
}

}  // namespace quillmark
