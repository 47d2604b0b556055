#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "dorvel/ScadaProtocol.h"

struct lua_State;

namespace test {

// A driver that registers itself under the add-in's name and keeps its configuration. The test determines
// what it does in a cycle.
class FakeDriver : public ScadaProtocol {
public:
    struct Variable {
        DriverVarDsc descriptor;
        std::map<std::string, OpcUa_VariantHlp> properties;
    };

    using Behaviour = std::function<void(FakeDriver& driver)>;

    void Inited() override;
    void AddChannel(ReadChannel const* read, WriteChannel const* write,
                    std::map<std::string, OpcUa_VariantHlp> const& properties) override;
    void Execute() override;

    // A poll: stores a value in the runtime, as a DataValue with this quality.
    void Deliver(std::size_t place, OpcUa_VariantHlp value, OpcUa_StatusCode status = OpcUa_Good);
    // A write phase: calls the function for every value that the write condition passes.
    using Write = std::function<void(std::size_t place, OpcUa_VariantHlp const& value)>;
    void WritePhase(Write const& write);
    void Report(bool fault, std::string const& text) { UpdateFaultState(fault, text); }

    // A numeric field, 0 when it is missing.
    long long Number(std::string const& name) const;

    std::string address;
    std::map<std::string, long long> numbers;
    std::vector<Variable> variables;
};

// Registers the driver, once per process, and sets what every cycle does until the object is destroyed.
class FakeAddIn {
public:
    explicit FakeAddIn(FakeDriver::Behaviour cycle = {});
    FakeAddIn(FakeAddIn const&) = delete;
    FakeAddIn& operator=(FakeAddIn const&) = delete;
    ~FakeAddIn();

    // Called at the end of every block's configuration.
    FakeDriver::Behaviour onInited;
    FakeDriver::Behaviour onCycle;
};

}  // namespace test
