// Lists the signals of a description with their addresses: list_signals FILE
#include <cstdio>

#include <quillmark/quillmark.h>

int main(int argumentCount, char* arguments[]) {
    const auto description =
        quillmark::Description::readFile(argumentCount > 1 ? arguments[1] : "");
    for (const quillmark::Finding& finding : description.findings()) {
        std::fputs(std::string(finding.consoleText()).c_str(), stderr);
    }
    for (const quillmark::Project project : description.projects()) {
        for (const quillmark::Module module : project.modules()) {
            for (const quillmark::Signal signal : module.signals()) {
                std::printf("%08x %s %s\n", signal.address().value_or(0),
                            std::string(signal.name()).c_str(),
                            std::string(signal.unitText()).c_str());
            }
        }
    }
    return description.isComplete() ? 0 : 1;
}
