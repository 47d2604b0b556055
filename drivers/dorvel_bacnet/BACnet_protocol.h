#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "TBACnet.h"
#include "VelaBufferParameters.h"
#include "dorvel/ScadaFields.h"
#include "dorvel/ScadaProtocol.h"
#include "dorvelshare/NLSocket.h"

namespace dorvel::BACnet {

// The driver object of one function block: one link to one BACnet device. The host fills the fields, hands
// over the variables with AddChannel, ends the configuration with Inited, and from then on calls Execute once
// per cycle of the block's task.
class BACnetProtocol : public ScadaProtocol {
public:
    BACnetProtocol();
    // Closes the socket and frees the device client with its tags. What AddChannel gathered goes only into
    // Inited: without that the records stay behind, as they may still be the configuration's.
    ~BACnetProtocol() override;

    static char const* _ShortName() { return "BACnet"; }
    static char const* _FullName() { return "TYPES.StandardFB.BACnet"; }
    // "DORVEL_Connect_" and a number that counts from 0, for hosts that name their connections.
    static std::string getId();
    // Registers the block type; only the first call in a process does anything. A name that another add-in
    // has taken leaves a trace and no type.
    static void RegAsLuaType();
    // Enters the script-visible fields, those of all drivers first.
    static void AddFields(ScadaFields& fields);

    // Gathers one variable. Its properties "ObjectType", "ObjectProperties" and "ObjectNumber" are the
    // configuration's codes (CodeMaps.h) and the object's number, 0 where there is none; nothing is checked.
    void AddChannel(ReadChannel const* read, WriteChannel const* write,
                    std::map<std::string, OpcUa_VariantHlp> const& properties) override;

    // Makes the device client. An Address that is not two parts around a ":" is logged and leaves the block
    // without one. A port that is no number throws std::invalid_argument, one beyond 32 bits
    // std::out_of_range, both with the text "stoul".
    void Inited() override;

    // One poll: values and a cleared fault state, or, when the device did not answer, the fault state "No
    // connection" and the old values of the DataValue variables as bad. After a clean poll the values that
    // the host wants written, in the order of the tags; a failed write is logged and is no fault. Waits for
    // the device; throws nothing of its own.
    void Execute() override;

    // Peer: IPv4 address, ":" and UDP port. For a device behind a router also the router's BACnet/IP address.
    std::string Address = "127.0.0.1:47808";
    // BACnet address of the device.
    std::string MAC = "255.255.255.255:47808";
    int Timeout = 1000;
    // Attempts per object, and the error budget of a cycle.
    int CountRepeat = 3;
    int AddressNumber = 1;
    // Network of a device behind a router, 0 for the local network.
    int NetworkNumber = 0;
    // Priority of writes.
    int Priority = 0;

    // Null until Inited has made one.
    TBACnet const* Device() const { return device.get(); }
    NLSocket const& Socket() const { return socket; }
    // What AddChannel has gathered for Inited.
    std::vector<VelaBufferParameters*> const& PendingChannels() const { return channels; }

private:
    void ReportValues(std::vector<WriteDataRec> const& values);
    void ReportLostConnection();
    void WriteDevice();
    WriteDataRec OldValueAsBad(DriverVarDsc const& descriptor) const;

    std::unique_ptr<TBACnet> device;
    std::vector<VelaBufferParameters*> channels;
    std::string ipPort;
    NLSocket socket;
    unsigned short taskParam = 0;
};

}  // namespace dorvel::BACnet
