#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "EdeColumns.h"
#include "EdeWriter.h"
#include "Printable.h"
#include "ProjectError.h"

namespace workbench {

namespace {

bool HasEnding(std::string const& text, std::string const& ending) {
    return text.size() > ending.size() &&
           LettersOf(text.substr(text.size() - ending.size())) == LettersOf(ending);
}

void WriteFile(std::string const& path, std::string const& content) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << content << std::flush;
    if (!file) {
        throw std::runtime_error(tools::Printable(path) + ": cannot be written: " + std::strerror(errno));
    }
}

// Files beside those that they become. They are removed unless Keep is called.
class NewFiles {
public:
    explicit NewFiles(std::vector<std::string> const& finalPaths) : paths(finalPaths) {}
    NewFiles(NewFiles const&) = delete;
    NewFiles& operator=(NewFiles const&) = delete;
    ~NewFiles() {
        for (std::string const& path : paths) {
            std::remove((path + ".part").c_str());
        }
    }

    void Write(std::size_t index, std::string const& content) { WriteFile(paths[index] + ".part", content); }
    void Keep() {
        for (std::string const& path : paths) {
            if (std::rename((path + ".part").c_str(), path.c_str()) != 0) {
                throw std::runtime_error(tools::Printable(path) +
                                         ": cannot be written: " + std::strerror(errno));
            }
        }
    }

private:
    std::vector<std::string> paths;
};

}  // namespace

std::vector<std::string> EdePaths(std::string const& name) {
    std::string base = name;
    for (std::string const ending : {".csv", "_EDE"}) {
        base = HasEnding(base, ending) ? base.substr(0, base.size() - ending.size()) : base;
    }
    return {base + "_EDE.csv", base + "_StateTexts.csv", base + "_Units.csv", base + "_ObjTypes.csv"};
}

void SaveEde(EdeTexts const& texts, std::string const& name, bool mayReplace) {
    std::vector<std::string> const paths = EdePaths(name);
    for (std::string const& path : paths) {
        std::error_code error;
        if (!mayReplace && std::filesystem::exists(path, error)) {
            throw ProjectError(tools::Printable(path) +
                               ": exists; choose another name with -o, or replace it with --force");
        }
    }
    NewFiles files(paths);
    files.Write(0, texts.ede);
    files.Write(1, texts.stateTexts);
    files.Write(2, texts.units);
    files.Write(3, texts.objectTypes);
    files.Keep();
}

}  // namespace workbench
