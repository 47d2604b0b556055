#pragma once

#include <gtest/gtest.h>

#include <lua.hpp>
#include <memory>
#include <string>
#include <utility>

#include "Answers.h"
#include "BACnet_protocol.h"
#include "LogCapture.h"
#include "ScriptedNetwork.h"
#include "dorvelshare/VariableStore.h"

namespace test {

// A block without a script: configured directly, with a store of variables, in a scripted network.
class BlockFixture : public ::testing::Test {
protected:
    BlockFixture() : store(std::make_shared<VariableStore>()), provider(store, nullptr) {
        dorvel::BACnet::TBACnet::IsTerminated = false;
        block = MakeBlock();
    }
    ~BlockFixture() override {
        // A block that was never initialised leaves its channels and properties to its configurer.
        for (auto const* pending : block->PendingChannels()) {
            delete pending->descriptor;
            delete pending;
        }
    }

    std::unique_ptr<dorvel::BACnet::BACnetProtocol> MakeBlock() {
        auto made = std::make_unique<dorvel::BACnet::BACnetProtocol>();
        made->SetDataProvider(&provider);
        made->MAC = "192.168.10.7:47808";
        made->CountRepeat = 1;
        made->FaultItemId = store->Declare("Fault", OpcUaType_Boolean);
        made->ErrorTextItemId = store->Declare("ErrorText", OpcUaType_String);
        return made;
    }

    static std::map<std::string, OpcUa_VariantHlp> Properties(int objectType, int property, int number) {
        std::map<std::string, OpcUa_VariantHlp> properties;
        properties["ObjectType"].SetInt(objectType);
        properties["ObjectProperties"].SetInt(property);
        properties["ObjectNumber"].SetInt(number);
        return properties;
    }

    // Adds a read-only variable on Present_Value of an analog input and returns its id.
    long long AddVariable(int number, OpcUa_BuiltInTypeHlp type, std::string field = "") {
        return AddVariable(*block, number, type, std::move(field));
    }
    long long AddVariable(dorvel::BACnet::BACnetProtocol& target, int number, OpcUa_BuiltInTypeHlp type,
                          std::string field = "") {
        ScadaProtocol::ReadChannel read;
        read.Id = store->Declare("Variable", type);
        read.Field = std::move(field);
        read.Type = type;
        target.AddChannel(&read, nullptr, Properties(1, 0, number));
        return read.Id;
    }

    VariableState StateOf(long long id, std::string const& field = "") const {
        VariableState state;
        EXPECT_TRUE(store->Read(id, field, state));
        return state;
    }
    double NumberOf(long long id, std::string const& field = "") const {
        double number = -1;
        StateOf(id, field).Value.GetDouble(number);
        return number;
    }
    // The fault state in the runtime: "true, text", "false, text", or "none" before the first report.
    std::string FaultState() const { return FaultState(*block); }
    std::string FaultState(dorvel::BACnet::BACnetProtocol const& target) const {
        bool fault = false;
        std::string text;
        if (StateOf(target.FaultItemId).Value.GetBool(fault) != OpcUa_Good) {
            return "none";
        }
        StateOf(target.ErrorTextItemId).Value.GetString(text);
        return std::string(fault ? "true" : "false") + ", " + text;
    }

    static std::string Request(unsigned invokeId, unsigned number) {
        return ToHex(BvlcFrame("01 04 02 74 " + HexOctet(invokeId) + "0E 0C 00 00 00 " + HexOctet(number) +
                               "1E 09 55 09 6F 1F"));
    }
    static Octets Answer(unsigned invokeId, unsigned number, std::string const& flags = "82 04 00") {
        return AnswerDatagram(ReadAck(invokeId, "00 00 00 " + HexOctet(number),
                                      PropertyResult(85, "44 42 28 00 00") + PropertyResult(111, flags)));
    }

    ScriptedNetwork network;
    LogCapture log;
    std::shared_ptr<VariableStore> store;
    LuaDataProvider provider;
    std::unique_ptr<dorvel::BACnet::BACnetProtocol> block;
};

}  // namespace test
