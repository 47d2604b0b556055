// Run by the build: simulator-manual VERSION FOLDER DOCUMENTS writes the manual pages and the completion of
// the simulator into FOLDER.

#include <exception>
#include <iostream>

#include "CommandLine.h"
#include "FileText.h"
#include "ManualFolder.h"
#include "MarkdownPage.h"

namespace {

tools::ManualProgram ManualOfSimulator() {
    using simulator::CommandLine;
    tools::ManualProgram program;
    program.name = "bacnet-simulator";
    program.brief = CommandLine::Brief();
    program.arguments = {{"DEVICE-FILE", CommandLine::Files(), true, true}};
    program.notes = CommandLine::Notes();
    program.related = {"dorvel-device(5)", "dorvel-workbench(1)"};
    for (CommandLine::Option const& option : CommandLine::Options()) {
        tools::ManualOption manual;
        manual.names = {option.name};
        manual.value = option.value ? option.value : "";
        manual.text = option.text;
        program.options.push_back(manual);
    }
    return program;
}

void WriteDevicePage(std::string const& folder, std::string const& document,
                     tools::ManualEdition const& edition) {
    tools::ManPage page("dorvel-device", 5, "device files of bacnet-simulator", edition);
    tools::AddMarkdown(page, tools::FileText(document, 1), {"Device files", "Writing", "Faults"});
    page.SeeAlso({"bacnet-simulator(1)", "dorvel-project(5)"});
    tools::WriteManualFile(folder, "man/man5/dorvel-device.5", page.Text());
}

}  // namespace

int main(int argc, char** argv) try {
    if (argc != 4) {
        std::cerr << "simulator-manual VERSION FOLDER DOCUMENTS\n";
        return 2;
    }
    tools::ManualEdition const edition = tools::EditionOf(argv[1]);
    tools::WriteManual(argv[2], ManualOfSimulator(), edition);
    WriteDevicePage(argv[2], std::string(argv[3]) + "/simulator.md", edition);
    return 0;
} catch (std::exception const& mistake) {
    std::cerr << "simulator-manual: " << mistake.what() << "\n";
    return 1;
}
