#include "SourceFiles.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace workbench {

namespace {

using Kind = LuaToken::Kind;

// True unless a field of the source is a text or a number other than that of the variable.
bool Agrees(SourceTable const& table, tools::ScriptValue const& variable) {
    return std::all_of(table.fields.begin(), table.fields.end(), [&](SourceField const& field) {
        tools::ScriptValue const& value = variable[field.name];
        switch (field.kind) {
            case SourceField::Literal::Text:
                return value.IsText() && value.text == field.literal;
            case SourceField::Literal::Number:
                return value.IsNumber() && value.number == std::strtod(field.literal.c_str(), nullptr);
            default:
                return true;
        }
    });
}

// The n-th of those, ordered by file and position, that lie inside the table; null without one.
template <class Items, class Place>
auto InTable(Items& items, SourceTable const& table, int occurrence, Place place)
    -> decltype(&items.front()) {
    auto const begin = std::make_pair(table.file, table.begin + 1);
    auto found = std::lower_bound(items.begin(), items.end(), begin,
                                  [&](auto const& item, auto const& least) { return place(item) < least; });
    if (items.end() - found < occurrence) {
        return nullptr;
    }
    found += occurrence - 1;
    return place(*found) < std::make_pair(table.file, table.end) ? &*found : nullptr;
}

}  // namespace

// The state of reading one source.
struct SourceFiles::Reading {
    std::size_t file;
    std::vector<SourceTable*> open;     // null for an opening parenthesis or bracket
    std::vector<bool> isCall;           // of each of these, whether it has the arguments of a call
    int calls = 0;                      // so many of them are calls
    LuaToken last[4];                   // the newest first
    int blocks = 0;                     // open tables that are blocks
    SourceTable* unfinished = nullptr;  // the value of its last field may have more tokens
};

void SourceFiles::Add(std::string const& path, std::string sourceText) {
    if (!indices.emplace(path, sources.size()).second) {
        return;
    }
    sources.push_back({path, std::move(sourceText)});
    ReadTables(sources.size() - 1);
}

bool SourceFiles::Has(std::string const& path) const {
    return indices.count(path) > 0;
}

namespace {

// The line of BACnet.new in front of a token, 0 without.
int CallLine(LuaToken const* last) {
    LuaToken const* const end = last[0].Is("(") ? last + 1 : last;
    return end[0].Is("new") && end[1].Is(".") && end[2].Is("BACnet") ? end[2].line : 0;
}

// True if an opening parenthesis, a table or a text after the token is an argument.
bool IsCalled(LuaToken const& token) {
    constexpr std::string_view keywords[] = {"and", "do",     "else",   "elseif", "if",    "in",   "not",
                                             "or",  "repeat", "return", "then",   "until", "while"};
    bool const isName = token.kind == Kind::Name && std::find(std::begin(keywords), std::end(keywords),
                                                              token.source) == std::end(keywords);
    return isName || token.Is(")") || token.Is("]");
}

}  // namespace

// A field begins with Name = in a table; the token is then the first of its value. A second one makes the
// value more than a literal.
void SourceFiles::ReadField(Reading& reading, LuaToken const& value) {
    if (reading.unfinished && !value.Is(",") && !value.Is(";") && !value.Is("}")) {
        reading.unfinished->fields.back().kind = SourceField::Literal::None;
    }
    reading.unfinished = nullptr;
    SourceTable* const table = reading.open.empty() ? nullptr : reading.open.back();
    LuaToken const* const last = reading.last;
    bool const isField = table && last[0].Is("=") && last[1].kind == Kind::Name &&
                         (last[2].Is("{") || last[2].Is(",") || last[2].Is(";"));
    if (!isField) {
        return;
    }
    SourceField field{last[1].source, last[1].line, SourceField::Literal::None, {}};
    if (value.kind == Kind::Text) {
        field.kind = SourceField::Literal::Text;
        field.literal = ValueOf(value);
    } else if (value.kind == Kind::Number) {
        field.kind = SourceField::Literal::Number;
        field.literal = std::string(value.source);
    }
    table->fields.push_back(std::move(field));
    reading.unfinished = table;
}

// The texts of blocks and tasks themselves do not count.
void SourceFiles::ReadArgument(Reading const& reading, LuaToken const& text) {
    SourceTable const* const table = reading.open.empty() ? nullptr : reading.open.back();
    bool const isOwn = reading.blocks > 0 || (table && table->isTask);
    if (!isOwn && (reading.calls > 0 || IsCalled(reading.last[0]))) {
        ++arguments.emplace(std::make_pair(reading.file, ValueOf(text)), Argument{text.line, 0})
              .first->second.count;
    }
}

void SourceFiles::OpenTable(Reading& reading, LuaToken const& token) {
    SourceTable table;
    table.file = reading.file;
    table.begin = token.position;
    table.end = sources[reading.file].text.size();
    table.line = token.line;
    table.callLine = CallLine(reading.last);
    table.isTask = reading.last[reading.last[0].Is("(") ? 1 : 0].Is("Task");
    table.inBlock = reading.blocks > 0;
    reading.blocks += table.callLine > 0 ? 1 : 0;
    tables.push_back(std::move(table));
    reading.open.push_back(&tables.back());
}

void SourceFiles::CloseTable(Reading& reading, LuaToken const& token) {
    if (reading.open.empty()) {
        return;
    }
    SourceTable* const table = reading.open.back();
    reading.open.pop_back();
    reading.calls -= reading.isCall.back() ? 1 : 0;
    reading.isCall.pop_back();
    if (!table) {
        return;
    }
    table->end = token.position;
    reading.blocks -= table->callLine > 0 ? 1 : 0;
}

void SourceFiles::ReadTables(std::size_t file) {
    LuaTokens tokens(sources[file].text);
    Reading reading{file, {}, {}, 0, {}, 0, nullptr};
    std::size_t const first = tables.size();
    for (LuaToken token = tokens.Next(); token.kind != Kind::End; token = tokens.Next()) {
        ReadField(reading, token);
        if (token.kind == Kind::Text) {
            texts[ValueOf(token)].push_back({file, token.position, token.line});
            ReadArgument(reading, token);
        } else if (token.Is("{")) {
            OpenTable(reading, token);
        } else if (token.Is("(") || token.Is("[")) {
            reading.open.push_back(nullptr);
        } else if (token.Is("}") || token.Is(")") || token.Is("]")) {
            CloseTable(reading, token);
        }
        if (reading.open.size() > reading.isCall.size()) {
            reading.isCall.push_back(!token.Is("[") && IsCalled(reading.last[0]));
            reading.calls += reading.isCall.back() ? 1 : 0;
        }
        std::move_backward(reading.last, reading.last + 3, reading.last + 4);
        reading.last[0] = token;
    }
    IndexTables(file, first);
}

void SourceFiles::IndexTables(std::size_t file, std::size_t first) {
    for (std::size_t i = first; i < tables.size(); ++i) {
        SourceField const* const name = tables[i].Find("Name");
        if (name && name->kind == SourceField::Literal::Text && !tables[i].isTask) {
            named[name->literal].tables.push_back(&tables[i]);
        }
        if (tables[i].callLine > 0) {
            calls[{file, tables[i].callLine}].push_back(&tables[i]);
        }
    }
}

SourceTable* SourceFiles::BlockAt(Place const& call, std::string const& name) {
    auto const file = indices.find(call.file);
    auto const found = file == indices.end() ? calls.end() : calls.find({file->second, call.line});
    if (found == calls.end()) {
        return nullptr;
    }
    for (SourceTable* const table : found->second) {
        SourceField const* const field = table->Find("Name");
        if (field && field->kind == SourceField::Literal::Text && field->literal == name) {
            return table;
        }
    }
    return found->second.size() == 1 ? found->second.front() : nullptr;
}

SourcePlace SourceFiles::PlaceOf(SourceTable const& table) const {
    SourceField const* const name = table.Find("Name");
    return {{sources[table.file].path, name ? name->line : table.line}, &table};
}

SourceTable* SourceFiles::Outside(std::string const& name, tools::ScriptValue const& variable) {
    auto const found = named.find(name);
    if (found == named.end()) {
        return nullptr;
    }
    auto& [all, taken] = found->second;
    auto const isCandidate = [&](SourceTable const* table) {
        return !table->inBlock && table->callLine == 0 && Agrees(*table, variable);
    };
    auto const isFree = [&](SourceTable const* table) { return !table->isTaken && isCandidate(table); };
    while (taken < all.size() && (all[taken]->isTaken || all[taken]->inBlock)) {
        ++taken;
    }
    auto const free = std::find_if(all.begin() + static_cast<std::ptrdiff_t>(taken), all.end(), isFree);
    if (free != all.end()) {
        (*free)->isTaken = true;
        return *free;
    }
    auto const again = std::find_if(all.rbegin(), all.rend(), isCandidate);
    return again == all.rend() ? nullptr : *again;
}

SourcePlace SourceFiles::VariableAt(SourcePlace const& block, tools::ScriptValue const& variable,
                                    int occurrence) {
    std::string const& name = variable["Name"].text;
    if (block.table) {
        auto const tablesOfName = named.find(name);
        SourceTable* const* const table =
            tablesOfName == named.end()
                ? nullptr
                : InTable(tablesOfName->second.tables, *block.table, occurrence,
                          [](SourceTable const* candidate) {
                              return std::make_pair(candidate->file, candidate->begin);
                          });
        if (table) {
            return PlaceOf(**table);
        }
        if (Text const* const text = TextIn(*block.table, name, occurrence)) {
            return {{block.place.file, text->line}, nullptr};
        }
    }
    if (SourceTable const* const table = Outside(name, variable)) {
        return PlaceOf(*table);
    }
    int const line = ArgumentLine(block.place.file, name);
    return {{block.place.file, line > 0 ? line : block.place.line}, nullptr};
}

SourceFiles::Text const* SourceFiles::TextIn(SourceTable const& table, std::string const& text,
                                             int occurrence) const {
    auto const found = texts.find(text);
    return found == texts.end() ? nullptr : InTable(found->second, table, occurrence, [](Text const& place) {
        return std::make_pair(place.file, place.position);
    });
}

int SourceFiles::ArgumentLine(std::string const& file, std::string const& text) const {
    auto const index = indices.find(file);
    auto const found = index == indices.end() ? arguments.end() : arguments.find({index->second, text});
    return found != arguments.end() && found->second.count == 1 ? found->second.line : 0;
}

SourcePlace SourceFiles::PlaceOfBlock(Place const& call, std::string const& name) {
    SourceTable const* const table = BlockAt(call, name);
    bool const isInTable = table && TextIn(*table, name, 1) != nullptr;
    int const line = isInTable ? 0 : ArgumentLine(call.file, name);
    return line > 0 ? SourcePlace{{call.file, line}, table, true} : SourcePlace{call, table};
}

BlockSource SourceFiles::Locate(Place const& call, tools::ScriptValue const& block) {
    BlockSource source;
    source.block = PlaceOfBlock(call, block["Name"].text);
    std::map<std::string_view, int> occurrences;
    for (tools::ScriptValue const& variable : block["Vars"].list) {
        tools::ScriptValue const& name = variable["Name"];
        source.variables.push_back(name.IsText() && !name.text.empty()
                                       ? VariableAt(source.block, variable, ++occurrences[name.text])
                                       : SourcePlace{source.block.place, nullptr});
    }
    return source;
}

}  // namespace workbench
