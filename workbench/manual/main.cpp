// Run by the build: workbench-manual VERSION FOLDER DOCUMENTS writes the manual pages and the completion of
// the workbench into FOLDER.

#include <exception>
#include <iostream>

#include "CommandTables.h"
#include "FileText.h"
#include "ManualFolder.h"
#include "MarkdownPage.h"

namespace {

void WriteProjectPage(std::string const& folder, std::string const& document,
                      tools::ManualEdition const& edition) {
    tools::ManPage page("dorvel-project", 5, "project files of dorvel-workbench", edition);
    tools::AddMarkdown(page, tools::FileText(document, 1),
                       {"Projects", "What the workbench refuses", "Setting variables"});
    page.SeeAlso({"dorvel-workbench(1)", "dorvel-workbench-check(1)", "dorvel-workbench-run(1)"});
    tools::WriteManualFile(folder, "man/man5/dorvel-project.5", page.Text());
}

}  // namespace

int main(int argc, char** argv) try {
    if (argc != 4) {
        std::cerr << "workbench-manual VERSION FOLDER DOCUMENTS\n";
        return 2;
    }
    tools::ManualEdition const edition = tools::EditionOf(argv[1]);
    tools::WriteManual(argv[2], workbench::ManualOfCommands(), edition);
    WriteProjectPage(argv[2], std::string(argv[3]) + "/workbench.md", edition);
    return 0;
} catch (std::exception const& mistake) {
    std::cerr << "workbench-manual: " << mistake.what() << "\n";
    return 1;
}
