#include "DriverFacts.h"

#include "CodeMaps.h"
#include "Network/AddressParser.h"
#include "TBACnet.h"

namespace workbench {

namespace {

constexpr char DefaultMac[] = "255.255.255.255:47808";

}  // namespace

DriverAddress AddressOf(VariableConfig const& variable) {
    static bool const filled = [] {
        dorvel::BACnet::InitObjectTypesMap();
        return true;
    }();
    (void)filled;
    return {dorvel::BACnet::GetBacnetObjectType(variable.objectType->code),
            dorvel::BACnet::GetPropertyType(variable.property->code)};
}

PropertyIdentifierEnum SentAs(VariableConfig const& variable) {
    DriverAddress const address = AddressOf(variable);
    return SentAs(address.objectType, address.property);
}

DriverWrite WriteOf(VariableConfig const& variable) {
    DriverAddress const address = AddressOf(variable);
    return WriteOf(address.objectType, address.property);
}

std::vector<char> AddressOctets(std::string const& text) {
    return Network::AddressParser::ParseAddress(text);
}

std::vector<char> DefaultMacOctets() {
    return AddressOctets(DefaultMac);
}

int AnswerTime() {
    return dorvel::BACnet::TBACnet::ReceiveTimeout;
}

}  // namespace workbench
