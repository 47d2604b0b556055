#include "BlockView.h"

#include <algorithm>

#include "NumberText.h"
#include "Printable.h"

namespace workbench {

BlockConfig::FieldValue const* FieldOf(BlockConfig const& block, std::string_view name) {
    auto const field = std::find_if(block.fields.begin(), block.fields.end(),
                                    [&](auto const& candidate) { return candidate.first == name; });
    return field == block.fields.end() ? nullptr : &field->second;
}

long long NumberOf(BlockConfig const& block, std::string_view name, long long byDefault) {
    BlockConfig::FieldValue const* const value = FieldOf(block, name);
    return value ? std::get<long long>(*value) : byDefault;
}

std::string TextOf(BlockConfig const& block, std::string_view name) {
    BlockConfig::FieldValue const* const value = FieldOf(block, name);
    return value ? std::get<std::string>(*value) : std::string();
}

long long SilenceOf(BlockConfig const& block) {
    return NumberOf(block, "CountRepeat", DefaultCountRepeat) * AnswerTime();
}

std::map<Object, std::vector<VariableConfig const*>> ObjectsOf(BlockConfig const& block) {
    std::map<Object, std::vector<VariableConfig const*>> objects;
    for (VariableConfig const& variable : block.variables) {
        objects[{AddressOf(variable).objectType, variable.objectNumber}].push_back(&variable);
    }
    return objects;
}

Device DeviceOf(BlockConfig const& block) {
    long long const network = NumberOf(block, "NetworkNumber", 0);
    bool const isUnclear = IsRefused(block, "NetworkNumber") || (network != 0 && IsRefused(block, "MAC"));
    if (block.address.empty() || isUnclear) {
        return {};
    }
    bool const hasMac = network != 0 && FieldOf(block, "MAC");
    return {AddressOctets(block.address), network,
            hasMac ? AddressOctets(TextOf(block, "MAC")) : std::vector<char>()};
}

bool IsKnown(Device const& device) {
    return !std::get<0>(device).empty();
}

Finding OfBlock(FindingCode code, BlockConfig const& block, char const* field, std::string const& message,
                std::string const& advice) {
    return {code, block.where.Of(field), block.name, {}, {}, field, message, advice};
}

Finding OfVariable(FindingCode code, BlockConfig const& block, VariableConfig const& variable,
                   char const* field, std::string const& message, std::string const& advice) {
    return {code, variable.where.Of(field), block.name, {}, variable.name, field, message, advice};
}

std::string NameOf(PropertyIdentifierEnum property) {
    int const number = static_cast<int>(property);
    auto const row = std::find_if(Properties().begin(), Properties().end(),
                                  [=](NameRow const& candidate) { return candidate.bacnetNumber == number; });
    return row == Properties().end() ? "property " + std::to_string(number) : row->name;
}

std::string Listed(std::vector<std::string> const& names) {
    constexpr std::size_t most = 3;
    std::size_t const shown = names.size() > most + 1 ? most : names.size();
    std::string text;
    for (std::size_t i = 0; i < shown; ++i) {
        bool const isLast = i + 1 == names.size();
        text += (i == 0 ? "" : isLast ? " and " : ", ") + tools::Quoted(names[i]);
    }
    return shown == names.size() ? text : text + " and " + std::to_string(names.size() - shown) + " more";
}

std::string Seconds(long long milliseconds) {
    return tools::NumberText(static_cast<double>(milliseconds) / 1000) + " s";
}

std::string Counted(std::size_t count, char const* noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

}  // namespace workbench
