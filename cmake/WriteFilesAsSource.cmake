# Run by embed_files (EmbedFiles.cmake) with FILES, paths with "|" between them, and OUTPUT.

set(types
    css "text/css\\; charset=utf-8" html "text/html\\; charset=utf-8" js "text/javascript\\; charset=utf-8"
    json "application/json" png "image/png" svg "image/svg+xml" webmanifest "application/manifest+json")

string(REPLACE "|" ";" FILES "${FILES}")
set(arrays "")
set(rows "")
foreach(file IN LISTS FILES)
    get_filename_component(name "${file}" NAME)
    get_filename_component(extension "${file}" LAST_EXT)
    string(SUBSTRING "${extension}" 1 -1 extension)
    list(FIND types "${extension}" index)
    if(index EQUAL -1)
        message(FATAL_ERROR "${file}: the type of .${extension} is not known; add it to WriteFilesAsSource.cmake")
    endif()
    math(EXPR index "${index} + 1")
    list(GET types ${index} type)
    string(MAKE_C_IDENTIFIER "${name}" identifier)
    file(READ "${file}" octets HEX)
    file(SHA256 "${file}" tag)
    string(SUBSTRING "${tag}" 0 16 tag)
    string(LENGTH "${octets}" length)
    math(EXPR length "${length} / 2")
    string(REGEX REPLACE "(..)" "0x\\1," octets "${octets}")
    # Lines of a length that tools can show.
    string(REGEX REPLACE "(0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,)" "\\1\n" octets "${octets}")
    string(APPEND arrays "unsigned char const File_${identifier}[] = {\n${octets}0};\n")
    string(APPEND rows "        {\"/${name}\", \"${type}\", Text(File_${identifier}, ${length}), \"\\\"${tag}\\\"\"},\n")
endforeach()

file(WRITE "${OUTPUT}" "#include \"PageFile.h\"

namespace workbench {

namespace {

${arrays}
std::string_view Text(unsigned char const* octets, std::size_t length) {
    return {reinterpret_cast<char const*>(octets), length};
}

}  // namespace

std::vector<PageFile> const& PageFiles() {
    static std::vector<PageFile> const files = {
${rows}    };
    return files;
}

}  // namespace workbench
")
