#pragma once

#include <ctime>

namespace quillmark {

/// Seconds of processor time that `work` takes. Unlike time on the clock it hardly depends on what
/// else the machine does, so that a test can tell work that grows with the square of its input.
template <typename Work>
double cpuSecondsOf(const Work& work) {
    const std::clock_t begin = std::clock();
    work();
    return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

}  // namespace quillmark
