// Runs a fuzz target over the files, and the files below the folders, that it is given. It needs no
// libFuzzer, so every build can replay a corpus or a single finding.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> FilesBelow(fs::path const& start) {
    if (!fs::is_directory(start)) {
        return {start};
    }
    std::vector<fs::path> files;
    for (fs::directory_entry const& entry : fs::recursive_directory_iterator(start)) {
        if (entry.is_regular_file()) {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

bool Replay(fs::path const& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        std::fprintf(stderr, "cannot be read: %s\n", file.c_str());
        return false;
    }
    // Ahead of the run, so that a crash has a name. It is not buffered.
    std::fprintf(stderr, "%s\n", file.c_str());
    std::vector<char> const content{std::istreambuf_iterator<char>(stream), {}};
    // A copy of the very size, so that AddressSanitizer sees a read behind the end.
    std::vector<std::uint8_t> const input(content.begin(), content.end());
    LLVMFuzzerTestOneInput(input.data(), input.size());
    return true;
}

}  // namespace

int main(int count, char** arguments) {
    std::size_t replayed = 0;
    for (int i = 1; i < count; ++i) {
        if (!fs::exists(arguments[i])) {
            std::fprintf(stderr, "no such file or folder: %s\n", arguments[i]);
            return 2;
        }
        for (fs::path const& file : FilesBelow(arguments[i])) {
            if (!Replay(file)) {
                return 2;
            }
            ++replayed;
        }
    }
    std::printf("%zu inputs replayed\n", replayed);
    return replayed == 0 ? 2 : 0;
}
