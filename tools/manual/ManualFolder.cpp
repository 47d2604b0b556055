#include "ManualFolder.h"

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "CommandPage.h"
#include "Completion.h"

namespace tools {

ManualEdition EditionOf(std::string const& version) {
    char const* const epoch = std::getenv("SOURCE_DATE_EPOCH");
    std::time_t const time =
        epoch && *epoch ? static_cast<std::time_t>(std::strtoll(epoch, nullptr, 10)) : std::time(nullptr);
    std::tm parts{};
    gmtime_r(&time, &parts);
    char date[16];
    std::strftime(date, sizeof date, "%Y-%m-%d", &parts);
    return {"dorvel_bacnet " + version, date};
}

void WriteManualFile(std::string const& folder, std::string const& file, std::string const& text) {
    std::filesystem::path const path = std::filesystem::path(folder) / file;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream stream(path, std::ios::binary);
    stream << text;
    if (!stream.flush()) {
        throw std::runtime_error(path.string() + ": cannot be written");
    }
}

void WriteManual(std::string const& folder, ManualProgram const& program, ManualEdition const& edition) {
    for (PageFileText const& page : CommandPages(program, edition)) {
        WriteManualFile(folder, "man/man1/" + page.file, page.text);
    }
    WriteManualFile(folder, "bash/" + program.name, BashCompletion(program));
    WriteManualFile(folder, "zsh/_" + program.name, ZshCompletion(program));
}

}  // namespace tools
