#include "ValueHint.h"

#include <algorithm>
#include <cctype>

namespace tools {

namespace {

// The words of letters, digits, "_", "-" and ".".
std::vector<std::string> WordsOf(std::string const& text) {
    std::vector<std::string> words(1);
    for (char const c : text) {
        if (std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '.' || c == '-') {
            words.back() += c;
        } else if (!words.back().empty()) {
            words.emplace_back();
        }
    }
    return words;
}

bool IsOf(std::string const& text, int (*kind)(int)) {
    return !text.empty() && std::all_of(text.begin(), text.end(),
                                        [kind](unsigned char c) { return c == '_' || kind(c) != 0; });
}

// "csv" of "FILE_EDE.csv", "lua" of "PROJECT"; empty for any other word.
std::string EndingOf(std::string const& word) {
    if (word == "PROJECT" || word == "DEVICE-FILE") {
        return "lua";
    }
    std::size_t const dot = word.find('.');
    if (dot == std::string::npos || word[0] == '_' || !IsOf(word.substr(0, dot), std::isupper)) {
        return {};
    }
    std::string ending = word.substr(dot + 1);
    ending.erase(ending.find_last_not_of('.') + 1);
    return IsOf(ending, std::islower) ? ending : std::string();
}

}  // namespace

ValueHint HintOf(std::string const& value, std::string const& text) {
    ValueHint hint;
    for (std::string const& word : WordsOf(value + " " + text)) {
        std::string const ending = EndingOf(word);
        if (!ending.empty() &&
            std::find(hint.endings.begin(), hint.endings.end(), ending) == hint.endings.end()) {
            hint.endings.push_back(ending);
        }
    }
    if (!hint.endings.empty() || value == "FILE" || value == "TABLE") {
        hint.kind = ValueHint::Kind::Files;
    } else if (value == "FOLDER") {
        hint.kind = ValueHint::Kind::Folders;
    } else if (value == "INTERFACE") {
        hint.kind = ValueHint::Kind::Interfaces;
    }
    return hint;
}

ValueHint HintOf(ManualOption const& option) {
    ValueHint hint = HintOf(option.value, option.value == "SOURCE" ? option.text : std::string());
    if (hint.kind == ValueHint::Kind::None && !option.choices.empty()) {
        hint.kind = ValueHint::Kind::Words;
    }
    return hint;
}

ValueHint HintOf(ManualArgument const& argument) {
    return HintOf(argument.name, argument.text);
}

}  // namespace tools
