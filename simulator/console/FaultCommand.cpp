#include "FaultCommand.h"

#include <charconv>
#include <iomanip>
#include <sstream>
#include <system_error>

#include "FaultReader.h"
#include "Mistake.h"
#include "Printable.h"
#include "Suggestion.h"

namespace simulator {

namespace {

using Words = std::vector<std::string>;
using Targets = std::vector<CommandTarget>;

// Splits at spaces that are not in quotation marks.
Words WordsOf(std::string const& line) {
    Words words;
    bool isQuoted = false;
    bool isInside = false;
    for (char const c : line) {
        bool const isSpace = c == ' ' || c == '\t' || c == '\r';
        if (isSpace && !isQuoted) {
            isInside = false;
            continue;
        }
        if (!isInside) {
            words.emplace_back();
            isInside = true;
        }
        if (c == '"') {
            isQuoted = !isQuoted;
        } else {
            words.back() += c;
        }
    }
    if (isQuoted) {
        throw Mistake("a quotation mark is missing");
    }
    return words;
}

template <class Number>
bool IsAll(std::string const& text, Number& number) {
    auto const result = std::from_chars(text.data(), text.data() + text.size(), number);
    return result.ec == std::errc() && result.ptr == text.data() + text.size();
}

// The value as in a device file: a number, true or false, or a text.
ScriptValue ValueOf(std::string const& text) {
    std::int64_t integer = 0;
    double number = 0;
    if (IsAll(text, integer)) {
        return ScriptValue::OfInteger(integer);
    }
    if (IsAll(text, number)) {
        return ScriptValue::OfNumber(number);
    }
    bool const isBoolean = text == "true" || text == "false";
    return isBoolean ? ScriptValue::OfBoolean(text == "true") : ScriptValue::OfText(text);
}

// analog_input:1 as {"analog_input", 1}
ScriptValue ObjectOf(std::string const& text) {
    std::size_t const colon = text.find(':');
    if (colon == std::string::npos) {
        throw Mistake("object: must be an object like analog_input:1, not " + tools::Quoted(text));
    }
    ScriptValue object;
    object.type = ScriptValue::Type::Table;
    object.list = {ValueOf(text.substr(0, colon)), ValueOf(text.substr(colon + 1))};
    return object;
}

ScriptField FieldOf(std::string const& word) {
    std::size_t const equals = word.find('=');
    if (equals == std::string::npos) {
        throw Mistake("must be key=value, not " + tools::Quoted(word));
    }
    std::string const name = word.substr(0, equals);
    std::string const text = word.substr(equals + 1);
    return {name, name == "object" ? ObjectOf(text) : ValueOf(text)};
}

Targets TargetsOf(std::string const& name, Targets const& all) {
    Targets found;
    Words names;
    for (CommandTarget const& target : all) {
        names.push_back(target.name);
        if (name == "*" || name == target.name) {
            found.push_back(target);
        }
    }
    if (found.empty()) {
        throw Mistake("unknown device " + tools::Quoted(name) + tools::DidYouMean(name, names));
    }
    return found;
}

std::string Told(Targets const& targets, std::string const& what) {
    std::string text;
    for (CommandTarget const& target : targets) {
        text += tools::Printable(target.name) + ": " + what + "\n";
    }
    return text;
}

std::string AddFault(Words const& words, Targets const& all) {
    if (words.size() < 3) {
        throw Mistake("must be: fault NAME KIND [key=value ...]");
    }
    Targets const targets = TargetsOf(words[1], all);
    ScriptValue given;
    given.type = ScriptValue::Type::Table;
    given.kind = words[0];
    given.list = {ScriptValue::OfText(words[2])};
    for (std::size_t i = 3; i < words.size(); ++i) {
        given.fields.push_back(FieldOf(words[i]));
    }
    Fault const fault = ReadFault(given);
    for (CommandTarget const& target : targets) {
        if (target.faults->IsFull()) {
            throw Mistake(target.name + " has " + std::to_string(Faults::Most) + " faults already");
        }
    }
    for (CommandTarget const& target : targets) {
        target.faults->Add(fault);
    }
    return Told(targets, TextOf(fault));
}

std::string Clear(Words const& words, Targets const& all) {
    if (words.size() != 2) {
        throw Mistake("must be: clear NAME");
    }
    Targets const targets = TargetsOf(words[1], all);
    for (CommandTarget const& target : targets) {
        target.faults->Clear();
    }
    return Told(targets, "no faults");
}

std::string List(Words const&, Targets const& all) {
    std::string text;
    for (CommandTarget const& target : all) {
        auto const faults = target.faults->List();
        for (Fault const& fault : faults) {
            text += tools::Printable(target.name) + ": " + TextOf(fault) + "\n";
        }
        text += faults.empty() ? tools::Printable(target.name) + ": no faults\n" : "";
    }
    return text;
}

std::string Help(Words const&, Targets const&) {
    return FaultHelp();
}

struct Command {
    char const* name;
    std::string (*run)(Words const&, Targets const&);
};

constexpr Command Commands[] = {{"fault", AddFault}, {"clear", Clear}, {"faults", List}, {"help", Help}};

std::string Run(Words const& words, Targets const& targets) {
    Words names;
    for (Command const& command : Commands) {
        names.emplace_back(command.name);
        if (words[0] == command.name) {
            try {
                return command.run(words, targets);
            } catch (Mistake const& mistake) {
                throw mistake.In(command.name);
            }
        }
    }
    throw Mistake("unknown command " + tools::Quoted(words[0]) + tools::DidYouMean(words[0], names));
}

}  // namespace

CommandAnswer RunFaultCommand(std::string const& line, std::vector<CommandTarget> const& targets) try {
    if (line.size() > LongestCommand) {
        throw Mistake("the line is longer than " + std::to_string(LongestCommand) + " octets");
    }
    Words const words = WordsOf(line);
    return {false, words.empty() ? "" : Run(words, targets)};
} catch (Mistake const& mistake) {
    return {true, tools::Printable(mistake.what(), LongestMessage) + "\n"};
}

std::string FaultHelp() {
    std::ostringstream text;
    text << "fault NAME KIND [key=value ...]   a fault of a device; * stands for all devices\n"
            "clear NAME                        end all faults of a device\n"
            "faults                            list them\n"
            "help                              show this text\n\n";
    for (FaultRow const& row : FaultRows) {
        text << "  " << std::left << std::setw(23) << row.name << row.text;
        std::string separator = " (";
        for (std::string const& field : FieldsOf(row)) {
            text << separator << field;
            separator = ", ";
        }
        text << (separator == ", " ? ")\n" : "\n");
    }
    text << "\nFor each: on=read|write|any object=TYPE:INSTANCE chance=0..1 every=N seed=N\n"
            "          after=SECONDS duration=SECONDS times=N\n";
    return text.str();
}

}  // namespace simulator
