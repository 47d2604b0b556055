#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "PlantState.h"
#include "ValuesForPeople.h"

namespace workbench {

// Which variables a person wants to see.
struct RowChoice {
    std::string
        filter;  // words that must all occur in the name, the object or the value; letter case is ignored
    bool onlyBad = false;
    bool onlyChanged = false;  // within ChangedLately
    bool onlyWritable = false;

    bool IsAll() const { return filter.empty() && !onlyBad && !onlyChanged && !onlyWritable; }
};

constexpr long long ChangedLately = 300000000;  // 30 s in 100-nanosecond units

// Finds the variables of a choice. What is known of a block is kept until its next cycle, so that values are
// made texts once a cycle at most, and only if names and objects do not decide.
class VariableSearch {
public:
    // The indexes of the chosen variables of a block, in their order.
    std::vector<std::size_t> Find(PlantState const& plant, std::size_t block, RowChoice const& choice,
                                  ChangeTimes const& changes, long long now);

private:
    struct BlockTexts {
        std::vector<std::string> texts;  // of each variable: name and object, in small letters
        SharedSnapshot matchedIn;
        std::string filter;
        std::vector<bool> matches;  // of each variable, for that filter in that cycle
    };

    void Match(BlockTexts& known, SharedSnapshot const& block, std::string const& filter);

    std::vector<BlockTexts> blocks;
    ValuesForPeople values;
};

}  // namespace workbench
