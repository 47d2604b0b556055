// Runs a fuzz target over the inputs that its arguments name (Corpus.h). It needs no libFuzzer, so every
// build can replay a corpus or a single finding.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <memory>
#include <vector>

#include "Corpus.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);

namespace {

void Replay(fuzz::CorpusInput const& input) {
    // Before the run and unbuffered, so that the last name is that of an input that ends the process.
    std::fprintf(stderr, "%s\n", input.name.c_str());
    // A block of the exact size, so that AddressSanitizer sees a read beyond the end.
    std::unique_ptr<std::uint8_t[]> const octets(new std::uint8_t[input.octets.size()]);
    std::copy(input.octets.begin(), input.octets.end(), octets.get());
    LLVMFuzzerTestOneInput(octets.get(), input.octets.size());
}

}  // namespace

int main(int count, char** arguments) {
    std::vector<fuzz::CorpusInput> inputs;
    try {
        for (int i = 1; i < count; ++i) {
            auto const read = fuzz::ReadInputs(arguments[i]);
            inputs.insert(inputs.end(), read.begin(), read.end());
        }
    } catch (std::exception const& mistake) {
        std::fprintf(stderr, "%s\n", mistake.what());
        return 2;
    }
    if (inputs.empty()) {
        std::fprintf(stderr, "no input; usage: %s BUNDLE.txt|BUNDLE.txt:NAME|FILE|FOLDER ...\n", *arguments);
        return 2;
    }
    // An exception that leaves the target ends the process.
    std::for_each(inputs.begin(), inputs.end(), Replay);
    std::printf("%zu inputs replayed\n", inputs.size());
    return 0;
}
