#include <algorithm>
#include <sstream>

#include "Completion.h"
#include "ValueHint.h"

namespace tools {

namespace {

// In single quotes. Within them, the characters that _arguments takes for its own have a backslash.
std::string Quoted(std::string const& text) {
    std::string quoted = "'";
    for (char const c : text) {
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return quoted + "'";
}

std::string Plain(std::string const& text) {
    std::string plain;
    for (char const c : text) {
        plain += c == '[' || c == ']' || c == ':' || c == '\\' ? std::string("\\") + c : std::string(1, c);
    }
    return plain;
}

std::string Joined(std::vector<std::string> const& words, char const* between) {
    std::string text;
    for (std::string const& word : words) {
        text += (text.empty() ? "" : between) + word;
    }
    return text;
}

// What _arguments does for a value.
std::string ActionOf(ValueHint const& hint) {
    switch (hint.kind) {
        case ValueHint::Kind::Files:
            // Without the qualifier, brackets at the end would be one.
            return hint.endings.empty() ? "_files"
                                        : "_files -g \"*.(" + Joined(hint.endings, "|") + ")(-.)\"";
        case ValueHint::Kind::Folders:
            return "_files -/";
        case ValueHint::Kind::Interfaces:
            return "_net_interfaces";
        default:
            return " ";
    }
}

std::string ActionOf(ManualOption const& option) {
    ValueHint const hint = HintOf(option);
    if (option.choices.empty()) {
        return ActionOf(hint);
    }
    std::string const words = Joined(option.choices, " ");
    if (option.isList) {
        return "_values -s , " + option.value + " " + words;
    }
    return hint.kind == ValueHint::Kind::Words ? "(" + words + ")"
                                               : "{compadd " + words + "; " + ActionOf(hint) + "}";
}

class ZshWriter {
public:
    explicit ZshWriter(ManualProgram const& shownProgram) : program(shownProgram) {}

    std::string Text() {
        out << "#compdef " << program.name << "\n\n";
        if (program.commands.empty()) {
            Command(program, "");
        } else {
            Commands();
        }
        return out.str();
    }

private:
    void Commands() {
        out << "local context curcontext=\"$curcontext\" state line ret=1\n"
            << "typeset -A opt_args\n"
            << "_arguments -C -s -S \\\n";
        Options(program, "    ");
        out << "    '1: :->command' '*:: :->rest' && ret=0\n"
            << "case $state in\n    command)\n        local -a commands=(\n";
        for (ManualCommand const& command : program.commands) {
            out << "            " << Quoted(command.name + ":" + Plain(command.brief)) << "\n";
        }
        out << "        )\n        _describe -t commands command commands && ret=0\n        ;;\n"
            << "    rest)\n        curcontext=\"${curcontext%:*}-$words[1]:\"\n        case $words[1] in\n";
        for (ManualCommand const& command : program.commands) {
            out << "            " << command.name << ")\n";
            Command(command, "                ");
            out << "                ret=$?\n                ;;\n";
        }
        out << "        esac\n        ;;\nesac\nreturn ret\n";
    }

    void Command(ManualCommand const& command, std::string const& indent) {
        // Letters can share a dash only where there are letters.
        bool const hasLetters =
            std::any_of(command.options.begin(), command.options.end(), [](ManualOption const& option) {
                return std::any_of(option.names.begin(), option.names.end(),
                                   [](std::string const& name) { return name.size() == 2; });
            });
        out << indent << "_arguments " << (hasLetters ? "-s " : "") << "-S";
        if (!command.options.empty() || !command.arguments.empty()) {
            out << " \\\n";
        }
        Options(command, indent + "    ");
        bool isRepeated = false;
        for (ManualArgument const& argument : command.arguments) {
            if (!isRepeated) {
                out << indent << "    "
                    << Quoted((argument.isRepeated   ? "*:"
                               : argument.isRequired ? ":"
                                                     : "::") +
                              Plain(argument.name) + ":" + ActionOf(HintOf(argument)))
                    << " \\\n";
            }
            isRepeated = argument.isRepeated;
        }
        out << indent << "    && return 0\n";
    }

    void Options(ManualCommand const& command, std::string const& indent) {
        for (ManualOption const& option : command.options) {
            for (std::string const& name : option.names) {
                out << indent << Quoted(ArgumentText(option, name)) << " \\\n";
            }
        }
    }

    // "(-D --define)--define=[Sets ...]:NAME=VALUE: "
    static std::string ArgumentText(ManualOption const& option, std::string const& name) {
        bool const isLong = name.compare(0, 2, "--") == 0;
        bool const endsAll = name == "--help" || name == "-h" || name == "--version";
        std::string text = option.isRepeated ? "*"
                           : endsAll         ? "(- *)"
                                             : "(" + Joined(option.names, " ") + ")";
        text += name;
        if (!option.value.empty()) {
            text += option.isValueOptional && isLong ? "=-" : isLong ? "=" : "+";
        }
        text += "[" + Plain(option.text) + "]";
        if (!option.value.empty()) {
            text += std::string(option.isValueOptional ? "::" : ":") + Plain(option.value) + ":" +
                    ActionOf(option);
        }
        return text;
    }

    ManualProgram const& program;
    std::ostringstream out;
};

}  // namespace

std::string ZshCompletion(ManualProgram const& program) {
    return ZshWriter(program).Text();
}

}  // namespace tools
