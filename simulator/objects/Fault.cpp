#include "Fault.h"

#include <iomanip>
#include <locale>
#include <sstream>

#include "ObjectType.h"

namespace simulator {

namespace {

constexpr std::chrono::milliseconds kUsualDelay{2000};
constexpr double kUsualLoss = 0.5;
constexpr std::size_t kUsualGarbage = 200;

constexpr char const* kHeaderNames[] = {"bvlc", "npdu", "apdu"};
constexpr char const* kScopeNames[] = {"any", "read", "write"};

// Everything that is not as makeFault has it.
class Line {
public:
    explicit Line(Fault const& fault) : m_fault(fault), m_usual(makeFault(fault.kind)) {
        m_text.imbue(std::locale::classic());
        m_text << rowOf(fault.kind).name;
    }

    template <class Value, class Shown>
    void add(char const* name, Value Fault::*member, Shown show) {
        if (!(m_fault.*member == m_usual.*member)) {
            m_text << ' ' << name << '=' << show(m_fault.*member);
        }
    }
    template <class Value>
    void add(char const* name, Value Fault::*member) {
        add(name, member, [](Value const& value) { return value; });
    }

    std::string text() const { return m_text.str(); }

private:
    Fault const& m_fault;
    Fault const m_usual;
    std::ostringstream m_text;
};

double seconds(std::chrono::milliseconds time) {
    return static_cast<double>(time.count()) / 1000;
}

std::string objectText(std::optional<ObjectId> const& object) {
    ObjectType const* found = &deviceObjectType();
    for (ObjectType const& type : objectTypes()) {
        found = type.code == object->type ? &type : found;
    }
    return std::string(found->name) + ":" + std::to_string(object->instance);
}

void addParameters(Line& line, unsigned parameters) {
    auto const add = [&line, parameters](unsigned bit, char const* name, auto member, auto... show) {
        if ((parameters & bit) != 0) {
            line.add(name, member, show...);
        }
    };
    add(kDelay, "seconds", &Fault::delay, seconds);
    add(kOctet, "octet", &Fault::octet);
    add(kOctet, "mend", &Fault::mends, [](bool mends) { return mends ? "true" : "false"; });
    add(kErrorClass, "class", &Fault::errorClass);
    add(kCode, "code", &Fault::code, [](auto const& code) { return *code; });
    add(kHeaders, "headers", &Fault::headers,
        [](FaultHeaders headers) { return kHeaderNames[static_cast<int>(headers)]; });
    add(kOctets, "octets", &Fault::octets);
    add(kSegment, "segment", &Fault::segment);
    add(kCount, "count", &Fault::count);
}

}  // namespace

FaultRow const* faultOfName(std::string_view name) {
    for (FaultRow const& row : kFaults) {
        if (row.name == name) {
            return &row;
        }
    }
    return nullptr;
}

Fault makeFault(FaultKind kind) {
    Fault fault;
    fault.kind = kind;
    if (kind == FaultKind::Delay) {
        fault.delay = kUsualDelay;
    } else if (kind == FaultKind::Loss) {
        fault.chance = kUsualLoss;
    } else if (kind == FaultKind::Garbage) {
        fault.octets = kUsualGarbage;
    }
    return fault;
}

std::string textOf(Fault const& fault) {
    Line line(fault);
    addParameters(line, rowOf(fault.kind).parameters);
    line.add("on", &Fault::on, [](FaultScope on) { return kScopeNames[static_cast<int>(on)]; });
    line.add("object", &Fault::object, objectText);
    line.add("chance", &Fault::chance);
    line.add("every", &Fault::every);
    line.add("seed", &Fault::seed);
    line.add("after", &Fault::after, seconds);
    line.add("duration", &Fault::duration, [](auto const& time) { return seconds(*time); });
    line.add("times", &Fault::times, [](auto const& times) { return *times; });
    return line.text();
}

}  // namespace simulator
