#pragma once

#include <cstddef>
#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "LuaTokens.h"
#include "ScriptValue.h"
#include "SourceTable.h"

namespace workbench {

// The sources of a project, in which the places of its blocks and variables are found. A place that cannot be
// found, because the project computes the name, is that of the block. A block that a function makes is where
// its name is a text of a call, if that is so once in the file. Adding a source reads it once; finding
// a variable does not read it again.
class SourceFiles {
public:
    // A file under the path by which Lua loads it.
    void Add(std::string const& path, std::string sourceText);
    bool Has(std::string const& path) const;

    // Where the block is that a call at this place makes of this table, and its variables. In this order:
    //
    // - the n-th variable of a name is the n-th table in the block with that Name;
    // - or the n-th text in the block that is the name, such as the argument of a function;
    // - or a table with that Name, and no other field that differs, outside of any block of any source. A
    //   table is found once before one is found again, so lists with equal names go to blocks in order;
    // - or the name as the only text of a call in the file.
    BlockSource Locate(Place const& call, tools::ScriptValue const& block);

private:
    struct Text {
        std::size_t file;
        std::size_t position;
        int line;
    };

    struct Source {
        std::string path;
        std::string text;
    };

    // The tables with one Name, in the order of the sources.
    struct Named {
        std::vector<SourceTable*> tables;
        std::size_t taken = 0;  // so many at the beginning are taken or in a block
    };

    // A text among the arguments of calls: where it is first, and how often.
    struct Argument {
        int line;
        int count;
    };

    struct Reading;

    void ReadTables(std::size_t file);
    void ReadField(Reading& reading, LuaToken const& value);
    void ReadArgument(Reading const& reading, LuaToken const& text);
    void OpenTable(Reading& reading, LuaToken const& token);
    void CloseTable(Reading& reading, LuaToken const& token);
    void IndexTables(std::size_t file, std::size_t first);
    SourceTable* BlockAt(Place const& call, std::string const& name);
    SourcePlace VariableAt(SourcePlace const& block, tools::ScriptValue const& variable, int occurrence);
    SourcePlace PlaceOfBlock(Place const& call, std::string const& name);
    // The line of the only argument in the file that is the text; 0 without.
    int ArgumentLine(std::string const& file, std::string const& text) const;
    // The n-th place of a text in the table; null without.
    Text const* TextIn(SourceTable const& table, std::string const& text, int occurrence) const;
    SourceTable* Outside(std::string const& name, tools::ScriptValue const& variable);
    SourcePlace PlaceOf(SourceTable const& table) const;

    std::deque<Source> sources;
    std::map<std::string, std::size_t, std::less<>> indices;
    std::deque<SourceTable> tables;
    std::map<std::string, Named> named;
    std::map<std::string, std::vector<Text>> texts;
    std::map<std::pair<std::size_t, int>, std::vector<SourceTable*>> calls;  // by file and line
    std::map<std::pair<std::size_t, std::string>, Argument> arguments;       // by file and text
};

}  // namespace workbench
