#include "SourceText.h"

#include <cstddef>
#include <utility>

#include "FileText.h"
#include "ProjectError.h"

namespace workbench {

namespace {

constexpr std::size_t LargestFile = 16;  // MB

}  // namespace

SourceText SourceText::FromFile(std::string const& path) try {
    return SourceText(tools::FileText(path, LargestFile));
} catch (tools::UnreadableFile const& reason) {
    throw ProjectError(reason.what());
}

SourceText::SourceText(std::string sourceText) : text(std::move(sourceText)) {
    if (text.compare(0, 3, "\xEF\xBB\xBF") == 0) {
        text.erase(0, 3);
    }
    if (text.compare(0, 1, "#") == 0) {
        text.insert(0, "--");
    }
}

}  // namespace workbench
