#pragma once

#include <cstdint>
#include <string>

#include "Snapshot.h"
#include "SparkplugPayload.h"

namespace workbench {

// How much a birth says of a variable. Less is for blocks of which a birth would be too long.
enum class BirthDetail {
    Whole,
    WithoutTexts,      // no description, object, property and states
    WithoutLongValues  // and no text or octets of more than LongestBirthValue octets: the metric is null
};
constexpr std::size_t LongestBirthValue = 1000;

// A variable in the cycle of its block, as it is published.
struct VariableView {
    BlockSnapshot const& block;
    VariableSnapshot const& variable;
    std::uint64_t alias = 0;
};

std::uint32_t QualityCodeOf(BlockSnapshot const& block, VariableSnapshot const& variable);

// The metric of a birth: name, alias, type, value, and the properties of docs/publish.md.
SparkplugMetric BirthMetric(VariableView const& view, std::string const& name, bool isSettable,
                            BirthDetail detail);
// True when a birth of that detail leaves the value out.
bool IsLeftOut(VariableSnapshot const& variable, BirthDetail detail);

// The metric of a message of data: alias, type and value. With the quality if it is not good, or was not good
// in the message before.
SparkplugMetric DataMetric(VariableView const& view, bool wasGood);

}  // namespace workbench
