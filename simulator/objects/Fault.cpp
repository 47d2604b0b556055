#include "Fault.h"

#include <iomanip>
#include <locale>
#include <sstream>

#include "ObjectType.h"

namespace simulator {

namespace {

constexpr std::chrono::milliseconds UsualDelay{2000};
constexpr double UsualLoss = 0.5;
constexpr std::size_t UsualGarbage = 200;

constexpr char const* HeaderNames[] = {"bvlc", "npdu", "apdu"};
constexpr char const* ScopeNames[] = {"any", "read", "write", "who_is"};

// All members that differ from those of MakeFault.
class Line {
public:
    explicit Line(Fault const& shownFault) : fault(shownFault), usual(MakeFault(shownFault.kind)) {
        text.imbue(std::locale::classic());
        text << RowOf(shownFault.kind).name;
    }

    template <class Value, class Shown>
    void Add(char const* name, Value Fault::*member, Shown show) {
        if (!(fault.*member == usual.*member)) {
            text << ' ' << name << '=' << show(fault.*member);
        }
    }
    template <class Value>
    void Add(char const* name, Value Fault::*member) {
        Add(name, member, [](Value const& value) { return value; });
    }

    std::string Text() const { return text.str(); }

private:
    Fault const& fault;
    Fault const usual;
    std::ostringstream text;
};

double Seconds(std::chrono::milliseconds time) {
    return static_cast<double>(time.count()) / 1000;
}

std::string ObjectText(std::optional<ObjectId> const& object) {
    std::string const instance = ":" + std::to_string(object->instance);
    for (ObjectType const& type : AllObjectTypes()) {
        if (type.code == object->type) {
            return type.name + instance;
        }
    }
    bool const isDevice = object->type == DeviceObjectType().code;
    return (isDevice ? DeviceObjectType().name : std::to_string(object->type)) + instance;
}

void AddParameters(Line& line, unsigned parameters) {
    auto const add = [&line, parameters](unsigned bit, char const* name, auto member, auto... show) {
        if ((parameters & bit) != 0) {
            line.Add(name, member, show...);
        }
    };
    add(DelayParameter, "seconds", &Fault::delay, Seconds);
    add(OctetParameter, "octet", &Fault::octet);
    add(OctetParameter, "mend", &Fault::mends, [](bool mends) { return mends ? "true" : "false"; });
    add(ErrorClassParameter, "class", &Fault::errorClass);
    add(CodeParameter, "code", &Fault::code, [](auto const& code) { return *code; });
    add(HeadersParameter, "headers", &Fault::headers,
        [](FaultHeaders headers) { return HeaderNames[static_cast<int>(headers)]; });
    add(OctetsParameter, "octets", &Fault::octets);
    add(SegmentParameter, "segment", &Fault::segment);
    add(CountParameter, "count", &Fault::count);
}

}  // namespace

FaultRow const* FaultOfName(std::string_view name) {
    for (FaultRow const& row : FaultRows) {
        if (row.name == name) {
            return &row;
        }
    }
    return nullptr;
}

bool CanHaveScope(FaultKind kind, FaultScope scope) {
    switch (kind) {
        case FaultKind::OtherInstance:
        case FaultKind::WrongStation:
            return scope == FaultScope::WhoIs;
        case FaultKind::Silence:
        case FaultKind::Delay:
        case FaultKind::Loss:
        case FaultKind::Duplicate:
        case FaultKind::OtherAddress:
        case FaultKind::Truncate:
        case FaultKind::BvlcFunction:
        case FaultKind::BvlcType:
        case FaultKind::BvlcLength:
        case FaultKind::Garbage:
            return true;
        default:
            return scope != FaultScope::WhoIs;
    }
}

Fault MakeFault(FaultKind kind) {
    Fault fault;
    fault.kind = kind;
    if (kind == FaultKind::Delay) {
        fault.delay = UsualDelay;
    } else if (kind == FaultKind::Loss) {
        fault.chance = UsualLoss;
    } else if (kind == FaultKind::Garbage) {
        fault.octets = UsualGarbage;
    } else if (kind == FaultKind::OtherInstance || kind == FaultKind::WrongStation) {
        fault.on = FaultScope::WhoIs;
    }
    return fault;
}

std::string TextOf(Fault const& fault) {
    Line line(fault);
    AddParameters(line, RowOf(fault.kind).parameters);
    line.Add("on", &Fault::on, [](FaultScope on) { return ScopeNames[static_cast<int>(on)]; });
    line.Add("object", &Fault::object, ObjectText);
    line.Add("chance", &Fault::chance);
    line.Add("every", &Fault::every);
    line.Add("seed", &Fault::seed);
    line.Add("after", &Fault::after, Seconds);
    line.Add("duration", &Fault::duration, [](auto const& time) { return Seconds(*time); });
    line.Add("times", &Fault::times, [](auto const& times) { return *times; });
    return line.Text();
}

}  // namespace simulator
