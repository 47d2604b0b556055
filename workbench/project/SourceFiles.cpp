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

void SourceFiles::CloseTable(Reading& reading, LuaToken const& token) {
    if (reading.open.empty()) {
        return;
    }
    SourceTable* const table = reading.open.back();
    reading.open.pop_back();
    if (!table) {
        return;
    }
    table->end = token.position;
    reading.blocks -= table->callLine > 0 ? 1 : 0;
}

void SourceFiles::ReadTables(std::size_t file) {
    LuaTokens tokens(sources[file].text);
    Reading reading{file, {}, {}, 0, nullptr};
    std::size_t const first = tables.size();
    for (LuaToken token = tokens.Next(); token.kind != Kind::End; token = tokens.Next()) {
        ReadField(reading, token);
        if (token.kind == Kind::Text) {
            texts[ValueOf(token)].push_back({file, token.position, token.line});
        } else if (token.Is("{")) {
            SourceTable table;
            table.file = file;
            table.begin = token.position;
            table.end = sources[file].text.size();
            table.line = token.line;
            table.callLine = CallLine(reading.last);
            table.isTask = reading.last[reading.last[0].Is("(") ? 1 : 0].Is("Task");
            table.inBlock = reading.blocks > 0;
            reading.blocks += table.callLine > 0 ? 1 : 0;
            tables.push_back(std::move(table));
            reading.open.push_back(&tables.back());
        } else if (token.Is("(") || token.Is("[")) {
            reading.open.push_back(nullptr);
        } else if (token.Is("}") || token.Is(")") || token.Is("]")) {
            CloseTable(reading, token);
        }
        std::move_backward(reading.last, reading.last + 3, reading.last + 4);
        reading.last[0] = token;
    }
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
        auto const textsOfName = texts.find(name);
        Text const* const text =
            textsOfName == texts.end()
                ? nullptr
                : InTable(textsOfName->second, *block.table, occurrence,
                          [](Text const& t) { return std::make_pair(t.file, t.position); });
        if (text) {
            return {{block.place.file, text->line}, nullptr};
        }
    }
    SourceTable const* const table = Outside(name, variable);
    return table ? PlaceOf(*table) : SourcePlace{block.place, nullptr};
}

BlockSource SourceFiles::Locate(Place const& call, tools::ScriptValue const& block) {
    BlockSource source;
    source.block = {call, BlockAt(call, block["Name"].text)};
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
