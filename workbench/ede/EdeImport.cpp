#include "EdeImport.h"

#include <algorithm>
#include <filesystem>
#include <initializer_list>
#include <system_error>

#include "EdeColumns.h"
#include "FileText.h"
#include "Printable.h"
#include "ProjectError.h"

namespace workbench {

namespace {

constexpr std::uintmax_t LargestFile = 64;  // in units of 2^20 octets

std::string ContentOf(std::string const& path) {
    std::error_code error;
    std::uintmax_t const size = std::filesystem::file_size(path, error);
    try {
        return tools::FileText(path,
                               error ? 1 : static_cast<std::size_t>(std::min((size >> 20) + 1, LargestFile)));
    } catch (tools::UnreadableFile const& unreadable) {
        throw ProjectError(unreadable.what());
    }
}

// What names of files are compared by: LettersOf, and all characters beyond ASCII.
std::string LettersOfName(std::string const& name) {
    std::string letters;
    for (char const& c : name) {
        letters += static_cast<unsigned char>(c) < 0x80 ? LettersOf({&c, 1}) : std::string(1, c);
    }
    return letters;
}

// The letters of a name that ends in "EDE", without these.
std::string BaseOf(std::filesystem::path const& path) {
    std::string const letters = LettersOfName(path.stem().string());
    bool const hasEnding = letters.size() >= 3 && letters.compare(letters.size() - 3, 3, "ede") == 0;
    return hasEnding ? letters.substr(0, letters.size() - 3) : letters;
}

// The start of a name whose letters are those of the base.
std::string StartOf(std::filesystem::path const& path, std::string const& base) {
    std::string const name = path.stem().string();
    std::size_t length = 0;
    while (length < name.size() && LettersOfName(name.substr(0, length)) != base) {
        ++length;
    }
    return name.substr(0, length);
}

// The files beside a file.
class Neighbours {
public:
    explicit Neighbours(std::filesystem::path const& path) : base(BaseOf(path)) {
        std::filesystem::path const folder = path.has_parent_path() ? path.parent_path() : ".";
        std::error_code error;
        for (std::filesystem::directory_iterator at(folder, error), end; !error && at != end;
             at.increment(error)) {
            if (at->path() != path && at->is_regular_file(error)) {
                paths.push_back(path.has_parent_path() ? at->path() : at->path().filename());
            }
        }
        std::sort(paths.begin(), paths.end());
        // Lists "a1" and "a-1" may be in one folder.
        std::stable_partition(paths.begin(), paths.end(),
                              [start = StartOf(path, base)](std::filesystem::path const& other) {
                                  return other.stem().string().compare(0, start.size(), start) == 0;
                              });
    }

    // The first one with the base and one of the endings, such as "statetexts".
    std::optional<EdeFile> Find(std::initializer_list<char const*> endings, ImportReport& report) const {
        std::optional<EdeFile> found;
        for (std::filesystem::path const& path : paths) {
            std::string const extension = LettersOf(path.extension().string());
            std::string const letters = LettersOfName(path.stem().string());
            bool const hasEnding = std::any_of(endings.begin(), endings.end(), [&](char const* ending) {
                return letters == base + ending || letters == base + "ede" + ending;
            });
            if (!hasEnding || (extension != "csv" && extension != "txt")) {
                continue;
            }
            if (found) {
                report.lines.push_back({path.string(), 0, 0, "", ImportLine::Effect::Note,
                                        "is not read, because " + tools::Printable(found->name) + " is"});
            } else {
                found = EdeFile{path.string(), ContentOf(path.string())};
            }
        }
        return found;
    }

private:
    std::string base;
    std::vector<std::filesystem::path> paths;
};

}  // namespace

EdeImport ImportEde(std::string const& path) {
    Neighbours const neighbours{std::filesystem::path(path)};
    ImportReport found;
    EdeFiles files{{path, ContentOf(path)}, {}, {}, {}};
    files.stateTexts = neighbours.Find({"statetexts", "statetext"}, found);
    files.units = neighbours.Find({"units", "unit"}, found);
    files.objectTypes = neighbours.Find({"objtypes", "objtype", "objecttypes", "objecttype"}, found);
    EdeImport import = ReadEde(files);
    if (import.inventory.devices.empty()) {
        std::string const first =
            import.report.lines.empty() ? "" : ": " + ImportLineText(import.report.lines.front());
        throw ProjectError(tools::Printable(path) +
                           ": no row is a point; a point has a device instance, an object type and an object "
                           "instance in its columns 2, 4 and 5, or in those that the headings name" +
                           (first.empty() ? "" : "; the first mistake is" + first));
    }
    import.report.lines.insert(import.report.lines.begin(), found.lines.begin(), found.lines.end());
    return import;
}

}  // namespace workbench
