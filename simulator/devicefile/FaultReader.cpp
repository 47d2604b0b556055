#include "FaultReader.h"

#include "Faults.h"
#include "Mistake.h"
#include "ObjectType.h"
#include "ScriptChecks.h"
#include "Suggestion.h"

namespace simulator {

namespace {

constexpr double kMostSeconds = 1e6;
constexpr std::uint32_t kMost = 0xFFFFFFFF;
constexpr std::uint32_t kMostOctets = 65507;  // of a UDP datagram

std::chrono::milliseconds seconds(ScriptValue const& value) {
    double const found = checks::number(value);
    if (!(found >= 0 && found <= kMostSeconds)) {
        throw Mistake("must be from 0 to 1000000 seconds");
    }
    return std::chrono::milliseconds(static_cast<std::int64_t>(found * 1000 + 0.5));
}

std::uint32_t from1(ScriptValue const& value) {
    std::uint32_t const found = checks::unsignedUpTo(value, kMost);
    if (found == 0) {
        throw Mistake("must be at least 1");
    }
    return found;
}

double chance(ScriptValue const& value) {
    double const found = checks::number(value);
    if (!(found >= 0 && found <= 1)) {
        throw Mistake("must be from 0 to 1");
    }
    return found;
}

// The place of a text in a list of names.
template <std::size_t Count>
std::size_t oneOf(ScriptValue const& value, char const* const (&names)[Count]) {
    std::string const& found = checks::text(value);
    std::string wanted;
    for (std::size_t i = 0; i < Count; ++i) {
        if (found == names[i]) {
            return i;
        }
        wanted += (i == 0 ? "\"" : i + 1 == Count ? " or \"" : ", \"") + std::string(names[i]) + "\"";
    }
    throw Mistake("must be " + wanted + ", not \"" + found + "\"");
}

FaultScope scope(ScriptValue const& value) {
    return static_cast<FaultScope>(oneOf(value, {"any", "read", "write"}));
}

FaultHeaders headers(ScriptValue const& value) {
    return static_cast<FaultHeaders>(oneOf(value, {"bvlc", "npdu", "apdu"}));
}

// Only some kinds have the field if `parameter` is not kNoParameter.
struct Field {
    char const* name;
    unsigned parameter;
    void (*read)(ScriptValue const&, Fault&);
};

constexpr Field kFields[] = {
    {"seconds", kDelay, [](ScriptValue const& v, Fault& f) { f.delay = seconds(v); }},
    {"octet", kOctet, [](ScriptValue const& v, Fault& f) { f.octet = checks::unsignedUpTo(v, kMost); }},
    {"mend", kOctet, [](ScriptValue const& v, Fault& f) { f.mends = checks::boolean(v); }},
    {"code", kCode,
     [](ScriptValue const& v, Fault& f) { f.code = checks::unsignedUpTo(v, rowOf(f.kind).highestCode); }},
    {"class", kErrorClass,
     [](ScriptValue const& v, Fault& f) { f.errorClass = checks::unsignedUpTo(v, 65535); }},
    {"headers", kHeaders, [](ScriptValue const& v, Fault& f) { f.headers = headers(v); }},
    {"octets", kOctets,
     [](ScriptValue const& v, Fault& f) { f.octets = checks::unsignedUpTo(v, kMostOctets); }},
    {"segment", kSegment, [](ScriptValue const& v, Fault& f) { f.segment = checks::unsignedUpTo(v, 255); }},
    {"count", kCount, [](ScriptValue const& v, Fault& f) { f.count = checks::unsignedUpTo(v, kMost); }},
    {"on", kNoParameter, [](ScriptValue const& v, Fault& f) { f.on = scope(v); }},
    {"object", kNoParameter, [](ScriptValue const& v, Fault& f) { f.object = checks::objectIdentifier(v); }},
    {"chance", kNoParameter, [](ScriptValue const& v, Fault& f) { f.chance = chance(v); }},
    {"every", kNoParameter, [](ScriptValue const& v, Fault& f) { f.every = from1(v); }},
    {"seed", kNoParameter, [](ScriptValue const& v, Fault& f) { f.seed = checks::unsignedUpTo(v, kMost); }},
    {"after", kNoParameter, [](ScriptValue const& v, Fault& f) { f.after = seconds(v); }},
    {"duration", kNoParameter, [](ScriptValue const& v, Fault& f) { f.duration = seconds(v); }},
    {"times", kNoParameter, [](ScriptValue const& v, Fault& f) { f.times = from1(v); }},
};

bool has(FaultRow const& row, Field const& field) {
    return field.parameter == kNoParameter || (row.parameters & field.parameter) != 0;
}

FaultRow const& readKind(ScriptValue const& given) {
    if (given.list.size() != 1) {
        throw Mistake("must begin with the name of a fault and have names for all else");
    }
    std::string const& name = checks::text(given.list[0]);
    FaultRow const* const row = faultOfName(name);
    if (!row) {
        std::vector<std::string> names;
        for (FaultRow const& known : kFaults) {
            names.emplace_back(known.name);
        }
        throw Mistake("unknown fault \"" + name + "\"" + suggestion(name, names));
    }
    return *row;
}

void readField(FaultRow const& row, ScriptField const& given, Fault& fault) {
    std::vector<std::string> names;
    for (Field const& field : kFields) {
        if (given.name == field.name && has(row, field)) {
            try {
                return field.read(given.value, fault);
            } catch (Mistake const& mistake) {
                throw mistake.in(given.name);
            }
        }
        if (has(row, field)) {
            names.emplace_back(field.name);
        }
    }
    throw Mistake("has no field \"" + given.name + "\"" + suggestion(given.name, names));
}

}  // namespace

Fault readFault(ScriptValue const& given) try {
    FaultRow const& row = readKind(given);
    Fault fault = makeFault(row.kind);
    for (ScriptField const& field : given.fields) {
        try {
            readField(row, field, fault);
        } catch (Mistake const& mistake) {
            throw mistake.in(row.name);
        }
    }
    return fault;
} catch (Mistake const& mistake) {
    throw mistake.at(given.line);
}

std::vector<std::string> fieldsOf(FaultRow const& row) {
    std::vector<std::string> names;
    for (Field const& field : kFields) {
        if (field.parameter != kNoParameter && has(row, field)) {
            names.emplace_back(field.name);
        }
    }
    return names;
}

std::vector<Fault> readFaults(ScriptValue const& given) try {
    std::vector<Fault> faults;
    if (given.isNil()) {
        return faults;
    }
    for (ScriptValue const& element : checks::list(given)) {
        if (!element.isMade("fault")) {
            throw Mistake("must be faults such as fault{\"silence\"}, not " + element.describe());
        }
        faults.push_back(readFault(element));
    }
    if (faults.size() > Faults::kMost) {
        throw Mistake("there are more than " + std::to_string(Faults::kMost));
    }
    return faults;
} catch (Mistake const& mistake) {
    throw mistake.in("faults");
}

}  // namespace simulator
