#pragma once

#include <map>
#include <string>

#include "FakeAddIn.h"
#include "LoadedProject.h"
#include "ProjectError.h"
#include "SourceText.h"
#include "opcua/OpcUa_Variant.h"

namespace test {

// The text of a variable and of a block, for most tests.
inline std::string const Temperature =
    R"({Name="T", Type="DataValue", ElementType="Float", ObjectType="analog-input", ObjectProperties="present-value", ObjectNumber=1})";

inline std::string Block(std::string const& fields, std::string const& variables = Temperature) {
    return "BACnet.new{" + fields + ", Vars={" + variables + "}}\n";
}

inline std::string const OneBlock = Block(R"(Name="AHU", Address="192.168.1.20:47808")");

inline tools::LuaLimits QuickLimits() {
    tools::LuaLimits limits;
    limits.time = std::chrono::milliseconds(100);
    limits.memory = std::size_t{8} << 20;
    return limits;
}

// The message of a project that does not load; "loaded" when it does.
inline std::string MistakeIn(std::string const& text, std::map<std::string, std::string> const& params = {},
                             tools::LuaLimits const& limits = {}) {
    workbench::LoadedProject project("p.lua", params, limits);
    try {
        project.Load(workbench::SourceText(text));
    } catch (workbench::ProjectError const& mistake) {
        return mistake.what();
    }
    return "loaded";
}

inline OpcUa_VariantHlp Float(float value) {
    OpcUa_VariantHlp variant;
    variant.SetFloat(value);
    return variant;
}

inline OpcUa_VariantHlp Text(std::string const& value) {
    OpcUa_VariantHlp variant;
    variant.SetUTF8String(value.data(), static_cast<int>(value.size()));
    return variant;
}

inline OpcUa_VariantHlp Boolean(bool value) {
    OpcUa_VariantHlp variant;
    variant.SetBool(value);
    return variant;
}

}  // namespace test
