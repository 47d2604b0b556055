#include "FaultReader.h"

#include "Faults.h"
#include "Mistake.h"
#include "ObjectType.h"
#include "Printable.h"
#include "ScriptChecks.h"
#include "Suggestion.h"

namespace simulator {

namespace {

constexpr double MostSeconds = 1e6;
constexpr std::uint32_t Most = 0xFFFFFFFF;
constexpr std::uint32_t MostOctets = 65507;  // of a UDP datagram

std::chrono::milliseconds Seconds(ScriptValue const& value) {
    double const found = checks::Number(value);
    if (!(found >= 0 && found <= MostSeconds)) {
        throw Mistake("must be from 0 to 1000000 seconds");
    }
    return std::chrono::milliseconds(static_cast<std::int64_t>(found * 1000 + 0.5));
}

std::uint32_t From1(ScriptValue const& value) {
    std::uint32_t const found = checks::UnsignedUpTo(value, Most);
    if (found == 0) {
        throw Mistake("must be at least 1");
    }
    return found;
}

double Chance(ScriptValue const& value) {
    double const found = checks::Number(value);
    if (!(found >= 0 && found <= 1)) {
        throw Mistake("must be from 0 to 1");
    }
    return found;
}

// The index of a text in a list of names.
template <std::size_t Count>
std::size_t OneOf(ScriptValue const& value, char const* const (&names)[Count]) {
    std::string const& found = checks::Text(value);
    std::string wanted;
    for (std::size_t i = 0; i < Count; ++i) {
        if (found == names[i]) {
            return i;
        }
        wanted += (i == 0 ? "\"" : i + 1 == Count ? " or \"" : ", \"") + std::string(names[i]) + "\"";
    }
    throw Mistake("must be " + wanted + ", not " + tools::Quoted(found));
}

FaultScope Scope(ScriptValue const& value) {
    return static_cast<FaultScope>(OneOf(value, {"any", "read", "write", "who_is"}));
}

FaultHeaders Headers(ScriptValue const& value) {
    return static_cast<FaultHeaders>(OneOf(value, {"bvlc", "npdu", "apdu"}));
}

// Only some kinds have the field if `parameter` is not NoParameter.
struct Field {
    char const* name;
    unsigned parameter;
    void (*read)(ScriptValue const&, Fault&);
};

constexpr Field Fields[] = {
    {"seconds", DelayParameter, [](ScriptValue const& v, Fault& f) { f.delay = Seconds(v); }},
    {"octet", OctetParameter,
     [](ScriptValue const& v, Fault& f) { f.octet = checks::UnsignedUpTo(v, Most); }},
    {"mend", OctetParameter, [](ScriptValue const& v, Fault& f) { f.mends = checks::Boolean(v); }},
    {"code", CodeParameter,
     [](ScriptValue const& v, Fault& f) { f.code = checks::UnsignedUpTo(v, RowOf(f.kind).highestCode); }},
    {"class", ErrorClassParameter,
     [](ScriptValue const& v, Fault& f) { f.errorClass = checks::UnsignedUpTo(v, 65535); }},
    {"headers", HeadersParameter, [](ScriptValue const& v, Fault& f) { f.headers = Headers(v); }},
    {"octets", OctetsParameter,
     [](ScriptValue const& v, Fault& f) { f.octets = checks::UnsignedUpTo(v, MostOctets); }},
    {"segment", SegmentParameter,
     [](ScriptValue const& v, Fault& f) { f.segment = checks::UnsignedUpTo(v, 255); }},
    {"count", CountParameter,
     [](ScriptValue const& v, Fault& f) { f.count = checks::UnsignedUpTo(v, Most); }},
    {"on", NoParameter, [](ScriptValue const& v, Fault& f) { f.on = Scope(v); }},
    {"object", NoParameter, [](ScriptValue const& v, Fault& f) { f.object = checks::ObjectIdentifier(v); }},
    {"chance", NoParameter, [](ScriptValue const& v, Fault& f) { f.chance = Chance(v); }},
    {"every", NoParameter, [](ScriptValue const& v, Fault& f) { f.every = From1(v); }},
    {"seed", NoParameter, [](ScriptValue const& v, Fault& f) { f.seed = checks::UnsignedUpTo(v, Most); }},
    {"after", NoParameter, [](ScriptValue const& v, Fault& f) { f.after = Seconds(v); }},
    {"duration", NoParameter, [](ScriptValue const& v, Fault& f) { f.duration = Seconds(v); }},
    {"times", NoParameter, [](ScriptValue const& v, Fault& f) { f.times = From1(v); }},
};

bool Has(FaultRow const& row, Field const& field) {
    return field.parameter == NoParameter || (row.parameters & field.parameter) != 0;
}

FaultRow const& ReadKind(ScriptValue const& given) {
    if (given.list.size() != 1) {
        throw Mistake("must begin with the name of a fault and have names for all else");
    }
    std::string const& name = checks::Text(given.list[0]);
    FaultRow const* const row = FaultOfName(name);
    if (!row) {
        std::vector<std::string> names;
        for (FaultRow const& known : FaultRows) {
            names.emplace_back(known.name);
        }
        throw Mistake("unknown fault " + tools::Quoted(name) + tools::DidYouMean(name, names));
    }
    return *row;
}

void ReadField(FaultRow const& row, ScriptField const& given, Fault& fault) {
    std::vector<std::string> names;
    for (Field const& field : Fields) {
        if (given.name == field.name && Has(row, field)) {
            try {
                return field.read(given.value, fault);
            } catch (Mistake const& mistake) {
                throw mistake.In(given.name);
            }
        }
        if (Has(row, field)) {
            names.emplace_back(field.name);
        }
    }
    throw Mistake("has no field " + tools::Quoted(given.name) + tools::DidYouMean(given.name, names));
}

}  // namespace

Fault ReadFault(ScriptValue const& given) try {
    FaultRow const& row = ReadKind(given);
    Fault fault = MakeFault(row.kind);
    for (ScriptField const& field : given.fields) {
        try {
            ReadField(row, field, fault);
        } catch (Mistake const& mistake) {
            throw mistake.In(row.name);
        }
    }
    if (!CanHaveScope(fault.kind, fault.on)) {
        throw Mistake(std::string(row.name) + ": on: must " + (fault.on == FaultScope::WhoIs ? "not " : "") +
                      "be \"who_is\"");
    }
    return fault;
} catch (Mistake const& mistake) {
    throw mistake.At(given.line);
}

std::vector<std::string> FieldsOf(FaultRow const& row) {
    std::vector<std::string> names;
    for (Field const& field : Fields) {
        if (field.parameter != NoParameter && Has(row, field)) {
            names.emplace_back(field.name);
        }
    }
    return names;
}

std::vector<Fault> ReadFaults(ScriptValue const& given) try {
    std::vector<Fault> faults;
    if (given.IsNil()) {
        return faults;
    }
    for (ScriptValue const& element : checks::List(given)) {
        if (!element.IsMade("fault")) {
            throw Mistake("must be faults such as fault{\"silence\"}, not " + element.Describe());
        }
        faults.push_back(ReadFault(element));
    }
    if (faults.size() > Faults::Most) {
        throw Mistake("there are more than " + std::to_string(Faults::Most));
    }
    return faults;
} catch (Mistake const& mistake) {
    throw mistake.In("faults");
}

}  // namespace simulator
