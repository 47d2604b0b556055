#include "SetRequest.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "FieldReader.h"
#include "Printable.h"
#include "ProjectError.h"
#include "ScheduleVariable.h"
#include "SetValue.h"
#include "Suggestion.h"

namespace workbench {

namespace {

struct Found {
    BlockConfig const* block = nullptr;
    VariableConfig const* variable = nullptr;
};

template <typename Predicate>
Found FindVariable(std::deque<BlockConfig> const& blocks, Predicate predicate) {
    for (BlockConfig const& block : blocks) {
        for (VariableConfig const& variable : block.variables) {
            if (predicate(block, variable)) {
                return {&block, &variable};
            }
        }
    }
    return {};
}

template <typename Predicate>
std::vector<std::string> NamesIf(std::deque<BlockConfig> const& blocks, Predicate predicate) {
    std::vector<std::string> names;
    for (BlockConfig const& block : blocks) {
        for (VariableConfig const& variable : block.variables) {
            if (predicate(variable)) {
                names.push_back(FullName(block, variable));
            }
        }
    }
    return names;
}

Found FindFullName(std::deque<BlockConfig> const& blocks, std::string const& name) {
    return FindVariable(blocks, [&](BlockConfig const& block, VariableConfig const& variable) {
        std::size_t const length = block.name.size();
        return name.size() == length + 1 + variable.name.size() && name[length] == '.' &&
               name.compare(0, length, block.name) == 0 &&
               name.compare(length + 1, name.npos, variable.name) == 0;
    });
}

std::string NameSuggestion(std::deque<BlockConfig> const& blocks, std::string const& name) {
    Found const bare = FindVariable(
        blocks, [&](BlockConfig const&, VariableConfig const& variable) { return variable.name == name; });
    if (bare.variable) {
        return tools::Suggest(FullName(*bare.block, *bare.variable));
    }
    std::string const suggestion = tools::DidYouMean(name, WritableNames(blocks));
    return suggestion.empty() ? tools::DidYouMean(name, NamesIf(blocks, [](auto const&) { return true; }))
                              : suggestion;
}

std::string Trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    std::size_t const first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return std::string(text.substr(first, text.find_last_not_of(blanks) - first + 1));
}

}  // namespace

std::string FullName(BlockConfig const& block, VariableConfig const& variable) {
    return block.name + "." + variable.name;
}

std::vector<std::string> Completions(std::deque<BlockConfig> const& blocks) {
    std::vector<std::string> texts;
    for (BlockConfig const& block : blocks) {
        for (VariableConfig const& variable : block.variables) {
            if (variable.write) {
                std::string const name = FullName(block, variable);
                texts.push_back(name);
                for (std::string const& word : SettableWords(variable)) {
                    texts.push_back(name + " = " + word);
                }
            }
        }
    }
    return texts;
}

std::vector<std::string> WritableNames(std::deque<BlockConfig> const& blocks) {
    return NamesIf(blocks, [](VariableConfig const& variable) { return variable.write; });
}

namespace {

SetRequest Request(std::deque<BlockConfig> const& blocks, Found const& found, std::string const& name,
                   std::string const& text) {
    if (!found.variable) {
        throw ProjectError(tools::Quoted(name) + " is not a variable of the project" +
                           NameSuggestion(blocks, name));
    }
    if (!found.variable->write) {
        throw ProjectError(tools::Quoted(name) +
                           " is read-only; to set it, give it Write = true in the project");
    }
    return {found.block, found.variable, InContext(tools::Quoted(name) + ": ", [&] {
                return SetValue(
                    *found.variable,
                    ScheduleTextOf(*found.variable, text, ScheduleNamesOf(*found.block, *found.variable)));
            })};
}

}  // namespace

VariableIndex::VariableIndex(std::deque<BlockConfig> const& allBlocks) : blocks(allBlocks) {
    for (BlockConfig const& block : blocks) {
        for (VariableConfig const& variable : block.variables) {
            variables.emplace(FullName(block, variable), std::make_pair(&block, &variable));
        }
    }
}

SetRequest VariableIndex::MakeSetRequest(std::string const& name, std::string const& text) const {
    auto const found = variables.find(name);
    return found == variables.end()
               ? Request(blocks, {}, name, text)
               : Request(blocks, {found->second.first, found->second.second}, name, text);
}

SetRequest MakeSetRequest(BlockConfig const& block, VariableConfig const& variable, std::string const& text) {
    return Request({}, {&block, &variable}, FullName(block, variable), Trimmed(text));
}

SetRequest MakeSetRequest(std::deque<BlockConfig> const& blocks, std::string const& name,
                          std::string const& text) {
    return Request(blocks, FindFullName(blocks, name), name, text);
}

SetRequest ReadAssignment(std::deque<BlockConfig> const& blocks, std::string_view assignment) {
    std::size_t const first = assignment.find('=');
    if (first == std::string_view::npos) {
        throw ProjectError(tools::Quoted(Trimmed(assignment)) + " is not of the form Block.Variable = value");
    }
    std::size_t equals = first;
    for (std::size_t position = first; position != std::string_view::npos;
         position = assignment.find('=', position + 1)) {
        if (FindFullName(blocks, Trimmed(assignment.substr(0, position))).variable) {
            equals = position;
            break;
        }
    }
    return MakeSetRequest(blocks, Trimmed(assignment.substr(0, equals)),
                          Trimmed(assignment.substr(equals + 1)));
}

}  // namespace workbench
