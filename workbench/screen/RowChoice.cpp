#include "RowChoice.h"

#include <algorithm>
#include <sstream>

#include "SetRequest.h"

namespace workbench {

namespace {

// ASCII alone: other letters must be typed as they are.
std::string SmallLetters(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    return text;
}

std::vector<std::string> WordsOf(std::string const& filter) {
    std::istringstream stream(SmallLetters(filter));
    std::vector<std::string> words;
    for (std::string word; stream >> word;) {
        words.push_back(word);
    }
    return words;
}

bool Has(std::string const& text, std::string const& word) {
    return text.find(word) != std::string::npos;
}

// True if each word is in the text or in the value.
bool Matches(std::vector<std::string> const& words, std::string const& text, VariableSnapshot const& variable,
             BlockSnapshot const& block, ValuesForPeople& values) {
    std::string value;
    for (std::string const& word : words) {
        if (Has(text, word)) {
            continue;
        }
        if (value.empty()) {
            value = SmallLetters(
                values.Whole(*block.config, *variable.config, variable.state.Value, block.localDiff));
        }
        if (!Has(value, word)) {
            return false;
        }
    }
    return true;
}

}  // namespace

void VariableSearch::Match(BlockTexts& known, SharedSnapshot const& block, std::string const& filter) {
    if (known.matchedIn == block && known.filter == filter) {
        return;
    }
    if (known.texts.empty()) {
        for (VariableSnapshot const& variable : block->variables) {
            known.texts.push_back(SmallLetters(FullName(*block->config, *variable.config) + "\n" +
                                               ObjectText(*variable.config)));
        }
    }
    std::vector<std::string> const words = WordsOf(filter);
    known.matches.assign(block->variables.size(), true);
    for (std::size_t i = 0; i < block->variables.size() && !words.empty(); ++i) {
        known.matches[i] = Matches(words, known.texts[i], block->variables[i], *block, values);
    }
    known.matchedIn = block;
    known.filter = filter;
}

std::vector<std::size_t> VariableSearch::Find(PlantState const& plant, std::size_t block,
                                              RowChoice const& choice, ChangeTimes const& changes,
                                              long long now) {
    blocks.resize(plant.blocks.size());
    BlockSnapshot const& snapshot = *plant.blocks[block];
    Match(blocks[block], plant.blocks[block], choice.filter);
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < snapshot.variables.size(); ++i) {
        VariableSnapshot const& variable = snapshot.variables[i];
        bool const isChosen = blocks[block].matches[i] &&
                              (!choice.onlyBad || IsBad(variable, plant.WriteOf(variable))) &&
                              (!choice.onlyChanged || now - changes.Of(block, i) <= ChangedLately) &&
                              (!choice.onlyWritable || variable.config->write);
        if (isChosen) {
            found.push_back(i);
        }
    }
    return found;
}

}  // namespace workbench
