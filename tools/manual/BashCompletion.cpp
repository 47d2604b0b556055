#include <algorithm>
#include <sstream>

#include "Completion.h"
#include "ValueHint.h"

namespace tools {

namespace {

std::string Joined(std::vector<std::string> const& words, char const* between) {
    std::string text;
    for (std::string const& word : words) {
        text += (text.empty() ? "" : between) + word;
    }
    return text;
}

// In single quotes.
std::string Quoted(std::string const& text) {
    std::string quoted = "'";
    for (char const c : text) {
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return quoted + "'";
}

std::string FunctionName(std::string name) {
    std::replace(name.begin(), name.end(), '-', '_');
    return "_" + name;
}

// The commands of bash that offer what a hint says.
std::string Offers(ValueHint const& hint) {
    switch (hint.kind) {
        case ValueHint::Kind::Files:
            return hint.endings.empty() ? "_filedir" : "_filedir '@(" + Joined(hint.endings, "|") + ")'";
        case ValueHint::Kind::Folders:
            return "_filedir -d";
        case ValueHint::Kind::Interfaces:
            return "COMPREPLY=($(cd /sys/class/net 2>/dev/null && compgen -f -- \"$cur\"))";
        default:
            return {};
    }
}

std::string WordOffers(ManualOption const& option, std::string const& list) {
    if (option.choices.empty()) {
        return {};
    }
    std::string const words = Quoted(Joined(option.choices, " "));
    return option.isList ? list + " " + words : "COMPREPLY+=($(compgen -W " + words + " -- \"$cur\"))";
}

class BashWriter {
public:
    explicit BashWriter(ManualProgram const& shownProgram)
        : program(shownProgram), name(FunctionName(program.name)) {}

    std::string Text() {
        out << "# bash completion for " << program.name << "\n\n";
        Lists();
        out << name << "()\n{\n"
            << "    local cur prev words cword split\n"
            << "    _init_completion -s || return\n";
        program.commands.empty() ? Command(program, "    ") : Commands();
        out << "} &&\n    complete -F " << name << " " << program.name << "\n";
        return out.str();
    }

private:
    static bool HasLists(ManualCommand const& command) {
        return std::any_of(command.options.begin(), command.options.end(),
                           [](ManualOption const& option) { return option.isList; });
    }

    // A function for words with commas between them.
    void Lists() {
        if (std::any_of(program.commands.begin(), program.commands.end(), HasLists) || HasLists(program)) {
            out << name << "_list()\n{\n"
                << "    local before=\n"
                << "    [[ $cur == *,* ]] && before=${cur%,*},\n"
                << "    COMPREPLY=($(compgen -P \"$before\" -W \"$1\" -- \"${cur##*,}\"))\n"
                << "    compopt -o nospace\n}\n\n";
        }
    }

    void Commands() {
        std::vector<std::string> names;
        for (ManualCommand const& command : program.commands) {
            names.push_back(command.name);
        }
        out << "    local command= i\n"
            << "    for ((i = 1; i < cword; ++i)); do\n"
            << "        case ${words[i]} in\n"
            << "            " << Joined(names, " | ") << ") command=${words[i]}; break ;;\n"
            << "        esac\n    done\n"
            << "    case $command in\n";
        for (ManualCommand const& command : program.commands) {
            out << "        " << command.name << ")\n";
            Command(command, "            ");
            out << "            ;;\n";
        }
        out << "        *)\n            COMPREPLY=($(compgen -W "
            << Quoted(Joined(names, " ") + " " + OptionNames(program)) << " -- \"$cur\"))\n"
            << "            ;;\n    esac\n";
    }

    void Command(ManualCommand const& command, std::string const& indent) {
        Values(command, indent);
        out << indent << "if [[ $cur == -* ]]; then\n"
            << indent << "    COMPREPLY=($(compgen -W " << Quoted(OptionNames(command)) << " -- \"$cur\"))\n";
        // bash completes a word at a time, so all arguments have what any of them has.
        ValueHint all;
        for (ManualArgument const& argument : command.arguments) {
            ValueHint const hint = HintOf(argument);
            all.kind = std::max(all.kind, hint.kind);
            all.endings.insert(all.endings.end(), hint.endings.begin(), hint.endings.end());
        }
        if (all.kind != ValueHint::Kind::None) {
            out << indent << "else\n" << indent << "    " << Offers(all) << "\n";
        }
        out << indent << "fi\n";
    }

    // After an option with a value.
    void Values(ManualCommand const& command, std::string const& indent) {
        if (std::none_of(command.options.begin(), command.options.end(), NeedsValue)) {
            return;
        }
        std::vector<std::string> free;
        out << indent << "case $prev in\n";
        for (ManualOption const& option : command.options) {
            std::string const offers = NeedsValue(option) ? OffersOf(option, indent + "        ") : "";
            if (!offers.empty()) {
                Case(option.names, offers, indent);
            } else if (NeedsValue(option)) {
                free.insert(free.end(), option.names.begin(), option.names.end());
            }
        }
        if (!free.empty()) {
            Case(free, {}, indent);
        }
        out << indent << "esac\n" << indent << "$split && return\n";
    }

    void Case(std::vector<std::string> const& names, std::string const& offers, std::string const& indent) {
        out << indent << "    " << Joined(names, " | ") << ")\n"
            << offers << indent << "        return\n"
            << indent << "        ;;\n";
    }

    // Lines for a value; none if any text will do.
    std::string OffersOf(ManualOption const& option, std::string const& indent) const {
        std::string lines;
        for (std::string const& offer : {Offers(HintOf(option)), WordOffers(option, name + "_list")}) {
            lines += offer.empty() ? "" : indent + offer + "\n";
        }
        return lines;
    }

    static bool NeedsValue(ManualOption const& option) {
        return !option.value.empty() && !option.isValueOptional;
    }

    static std::string OptionNames(ManualCommand const& command) {
        std::string names;
        for (ManualOption const& option : command.options) {
            names += (names.empty() ? "" : " ") + Joined(option.names, " ");
        }
        return names;
    }

    ManualProgram const& program;
    std::string name;
    std::ostringstream out;
};

}  // namespace

std::string BashCompletion(ManualProgram const& program) {
    return BashWriter(program).Text();
}

}  // namespace tools
