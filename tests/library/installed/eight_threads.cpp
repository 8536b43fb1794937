// Eight threads read a description each, walk it, convert it in memory and compare it with itself:
// eight_threads FILE
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

#include <quillmark/quillmark.h>

std::size_t work(const std::string& file) {
    const auto description = quillmark::Description::readFile(file);
    std::size_t addresses = 0;
    for (const auto signal : description.projects()[0].modules()[0].signals()) {
        addresses += signal.address() ? 1 : 0;
    }
    quillmark::ConvertOptions options;
    options.setVersions("<v><TopVersion>2023.4.2</TopVersion></v>");
    std::string document;
    const bool converted = quillmark::convert(description, options, document).isDone();
    const bool same = quillmark::compare(description, description).differences().empty();
    return converted && same ? addresses : 0;
}

int main(int, char* arguments[]) {
    std::vector<std::size_t> results(8);
    std::vector<std::thread> threads;
    for (std::size_t& result : results) {
        threads.emplace_back([&result, file = arguments[1]] { result = work(file); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    std::printf("%zu %zu\n", results.front(), results.back());
}
