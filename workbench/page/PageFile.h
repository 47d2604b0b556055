#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace workbench {

// A file of the page that is built into the program.
struct PageFile {
    std::string_view path;  // "/page.css"
    std::string_view type;  // of its content, as in a header
    std::string_view content;
    std::string_view tag;  // an entity tag with its quotation marks; another one for other content
};

// The files of workbench/page/files and those of the chart, in a source that the build makes.
std::vector<PageFile> const& PageFiles();

}  // namespace workbench
