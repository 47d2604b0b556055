#include <cerrno>
#include <cstddef>
#include <cstring>
#include <deque>
#include <filesystem>
#include <stdexcept>

#include "EdeColumns.h"
#include "EdeWriter.h"
#include "PartFile.h"
#include "Printable.h"
#include "ProjectError.h"

namespace workbench {

namespace {

bool HasEnding(std::string const& text, std::string const& ending) {
    return text.size() > ending.size() &&
           LettersOf(text.substr(text.size() - ending.size())) == LettersOf(ending);
}

[[noreturn]] void RefuseExisting(std::string const& path) {
    throw ProjectError(tools::Printable(path) +
                       ": exists; choose another name with -o, or replace it with --force");
}

[[noreturn]] void Fail(std::string const& path) {
    throw std::runtime_error(tools::Printable(path) + ": cannot be written: " + std::strerror(errno));
}

}  // namespace

std::vector<std::string> EdePaths(std::string const& name) {
    std::string base = name;
    for (std::string const ending : {".csv", "_EDE"}) {
        base = HasEnding(base, ending) ? base.substr(0, base.size() - ending.size()) : base;
    }
    return {base + "_EDE.csv", base + "_StateTexts.csv", base + "_Units.csv", base + "_ObjTypes.csv"};
}

// All are written before the first one takes its place.
void SaveEde(EdeTexts const& texts, std::string const& name, bool mayReplace) {
    std::vector<std::string> const paths = EdePaths(name);
    for (std::string const& path : paths) {
        std::error_code error;
        if (!mayReplace && std::filesystem::exists(path, error)) {
            RefuseExisting(path);
        }
    }
    std::string const* const contents[] = {&texts.ede, &texts.stateTexts, &texts.units, &texts.objectTypes};
    std::deque<PartFile> parts;
    for (std::size_t i = 0; i < paths.size(); ++i) {
        parts.emplace_back(paths[i]);
        if (!parts.back().Write(*contents[i])) {
            Fail(paths[i]);
        }
    }
    for (std::size_t i = 0; i < paths.size(); ++i) {
        if (!parts[i].TakePlace(mayReplace)) {
            Fail(paths[i]);
        }
    }
}

}  // namespace workbench
