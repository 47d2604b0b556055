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

// The driver object of one function block: one link to one BACnet device. The host fills the fields, adds the
// variables with AddChannel, ends the configuration with Inited, and then calls Execute once per cycle of the
// block's task. The calls of one object do not overlap.
class BACnetProtocol : public ScadaProtocol {
public:
    BACnetProtocol();
    // Closes the socket and destroys the device client with its tags. Records that AddChannel added are
    // released by Inited only: without it the configuration may still own them.
    ~BACnetProtocol() override;

    static char const* _ShortName() { return "BACnet"; }
    static char const* _FullName() { return "TYPES.StandardFB.BACnet"; }
    // "DORVEL_Connect_" and a number that counts from 0. The driver itself does not call it.
    static std::string getId();
    // Registers the block type. Only the first call in a process has an effect. If another add-in has taken
    // the name, it writes a trace and registers nothing.
    static void RegAsLuaType();
    // Adds the fields that a script can use, those of every driver first.
    static void AddFields(ScadaFields& fields);

    // Adds one variable. Its properties "ObjectType", "ObjectProperties" and "ObjectNumber" are the codes of
    // the configuration (CodeMaps.h) and the object number, 0 if absent. Nothing is checked here.
    void AddChannel(ReadChannel const* read, WriteChannel const* write,
                    std::map<std::string, OpcUa_VariantHlp> const& properties) override;

    // Creates the device client. An Address that is not two parts around a ":" is logged, and the block then
    // has no client. A port that is not a number throws std::invalid_argument, a port beyond 32 bits
    // std::out_of_range, both with the text "stoul".
    void Inited() override;

    // One poll. If it succeeds, delivers the values and clears the fault state; then writes each value that
    // the host's write condition lets through, in the order of the tags. A failed write is logged and is not
    // a fault. If the device does not answer, sets the fault state "No connection" and delivers the old
    // values of the DataValue variables as bad. A stop of the runtime ends it early. Blocks while it waits
    // for the device; throws nothing of its own.
    void Execute() override;

    // The peer: IPv4 address, ":" and UDP port. For a device behind a router also the BACnet/IP address of
    // the router.
    std::string Address = "127.0.0.1:47808";
    // The BACnet address of the device.
    std::string MAC = "255.255.255.255:47808";
    // Milliseconds; stored only.
    int Timeout = 1000;
    // Attempts per object, and the error budget of a poll.
    int CountRepeat = 3;
    // Stored only.
    int AddressNumber = 1;
    // The network of a device behind a router; 0 for the local network.
    int NetworkNumber = 0;
    // The priority of writes, 1 to 16; any other number sends none.
    int Priority = 0;

    // Null until Inited has created the client.
    TBACnet const* Device() const { return device.get(); }
    NLSocket const& Socket() const { return socket; }
    // The variables that AddChannel has added for Inited.
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
