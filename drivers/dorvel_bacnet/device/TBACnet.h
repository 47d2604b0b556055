#pragma once

#include <netinet/in.h>

#include <atomic>
#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "CPropertyValue.h"
#include "ComplexAck.h"
#include "Network/Layer.h"
#include "Network/NDataUnitRequest.h"
#include "ObjectIdentifier.h"
#include "PDU.h"
#include "PropertyTypeEnum.h"
#include "ReadPropertyMultipleAck.h"
#include "TBACnetSettings.h"
#include "VelaBufferParameters.h"
#include "dorvelshare/LuaDataProvider.h"
#include "dorvelshare/NLSocket.h"
#include "tagReadData.h"

namespace dorvel::BACnet {

// The invoke id of the latest write of the process; 0 follows 255. Any thread may read or assign it. Blocks
// on different threads take distinct ids from it, but an answer is compared with the latest id, even if
// another block took that one.
extern std::atomic<unsigned char> WriteInvokeId;

// True if an answer is the SimpleAck of the latest write. Does not read the tag. An Error or a Reject of that
// write throws ErrorResponseException or RejectResponseException; every other PDU, including an Abort, is not
// its answer. Throws std::bad_cast for a PDU of another class than its type has.
bool ProcessWriteResponse(PDU& pdu, tagReadData const& tag);

// The client of one device: its address and limits, the tags that are read from it, and the poll. It belongs
// to the task of its block. Only that task calls its operations, one at a time; those that send block until
// the answer or the time-out.
class TBACnet {
public:
    // Tags by object type, then by object number, then in the order of configuration.
    using TagTable = std::map<ObjectTypeEnum, std::map<int, std::vector<tagReadData*>>>;

    // Milliseconds to wait for one datagram. The Timeout of the block has no effect.
    static constexpr int ReceiveTimeout = 1000;

    // True while the runtime stops: every poll then ends before its next object. Any thread may read or
    // assign it.
    static std::atomic<bool> IsTerminated;

    // The caller keeps the ownership of the socket, which must outlive the client. The client takes peer, the
    // destination of every datagram, when the constructor returns; if it throws, for lack of memory, the
    // caller keeps it.
    //
    // The roles of the two texts (grammar: Network::AddressParser) depend on the network number, of which the
    // low 16 bits count:
    //
    //   0      mac is the address of the device; `address` is not read and no socket is opened
    //   other  mac is the address of the device on that network, behind the router at `address`; the socket
    //          is opened on the first free one of the 20 ports after the port in its record
    //
    // A text that is not an address is logged; the client is then not IsCreated().
    TBACnet(NLSocket& socket, sockaddr_in* peer, unsigned short taskParam, std::string address,
            std::string mac, int timeout, int countRepeat, int addressNumber, int networkNumber,
            int priority);
    TBACnet(TBACnet const&) = delete;
    TBACnet& operator=(TBACnet const&) = delete;
    // Closes the socket if it is open and destroys the tags.
    ~TBACnet();

    // Adds the variables to the tag table. Takes the descriptors, which the records then no longer have; the
    // records stay owned by the caller. Codes are not checked (CodeMaps.h has the result for an unknown one),
    // and duplicates are not detected. If it throws, for lack of memory, records whose descriptor was not
    // taken yet still have it, and the client must be destroyed.
    void InitTags(std::vector<VelaBufferParameters*> const& params);

    // One poll of all tags: one exchange per object, by ascending type and number. Appends the values. The
    // poll starts with a budget of errorLimit; a failed object takes repeatCount from it, an answered one
    // restores it. When it is used up, the poll ends and sets the fault flag. As both numbers are the
    // CountRepeat of the block, the first failed object ends the poll. A stop of the runtime ends it before
    // the next object, without a fault.
    void Read(std::vector<WriteDataRec>& values);

    // Reads one object, to which all tags belong, in up to repeatCount attempts and appends the values.
    // Returns 1 if the device took part: it sent values, or an answer that a repeat cannot improve. Returns 0
    // if no attempt had a usable answer, and without a further attempt if a segmented answer is incomplete.
    // No exception of a transaction leaves it.
    //
    // Departure from ASHRAE 135 clause 5.4.4: each attempt has a new invoke id, and an Error, a Reject or an
    // Abort does not end the transaction but leads to the next attempt. Installed systems rely on this.
    int ProcessTagM(ObjectIdentifier object, std::vector<tagReadData*> const& tags,
                    std::vector<WriteDataRec>& values);

    // Sends the request to the peer and waits for one datagram, from any sender. Returns the number of octets
    // received, and then apdu is the APDU of the datagram. 0 or less means that none came; apdu does not
    // change. Throws std::runtime_error "packet format error" for a datagram that is not a BVLC frame with an
    // NPDU, "packet size error" for a wrong length field, and what Network::Message::Parse throws.
    int SendAndReceive(Network::NDataUnitRequest const& request, std::vector<char>& apdu);
    // The same without sending.
    int Receive(std::vector<char>& apdu);

    // Converts an answer to records, one for each property that a tag asks for; if several tags ask for one,
    // the first gets it. If a status flag is set, the record of Present_Value has the quality "sensor
    // failure"; no other record has. Returns 1 when the answer was processed, 0 when it is not the expected
    // one.
    //
    // Throws ErrorResponseException, RejectResponseException or AbortResponseException for such an answer
    // with this invoke id, SupportInformationException for a property without a row in the support table, and
    // std::bad_cast for an unexpected service or class of value. Records appended before an exception remain.
    int ProcessResponseM(ObjectIdentifier object, char const& readInvokeId, PDU& pdu,
                         std::vector<tagReadData*> const& tags, std::vector<WriteDataRec>& values);

    // Fills a new record: the target from the descriptor, and the value, converted to the declared type of
    // the variable. A DataValue also has the status and the present time. A type that StoreValue does not
    // store leaves the value empty. Throws std::bad_cast for a value of another class than the type has.
    void ProcessResponseForTag(PropertyTypeEnum type, DriverVarDsc const* descriptor, CPropertyValue& value,
                               unsigned int status, WriteDataRec& record);

    // Writes a value of the runtime to the object of the tag, with the priority of the settings. Every
    // failure, including an error response of the device, is logged and has no other effect. A write is never
    // repeated.
    void Write(tagReadData* tag, OpcUa_VariantHlp& value);
    // The same; nothing is sent through the layer. Whatever the first answer is, it receives until the answer
    // to the write or a time-out, so that no late datagram remains for the next read. So a write lasts one
    // more receive time-out.
    void ProcessWriteTag(tagReadData const& tag, Network::Layer& layer, OpcUa_VariantHlp const& value);
    // The write as a request with the next invoke id, which is used up even if the value cannot be written.
    // Throws as FormWriteMessage does.
    Network::NDataUnitRequest FormWriteRequest(tagReadData const& tag, std::vector<char> const& linkAddress,
                                               Network::Address const& remoteAddress,
                                               OpcUa_VariantHlp const& value);
    // The APDU of one WriteProperty. The value has the type of the tag's property. The written property is
    // Present_Value, except for the three constants of a loop and the two schedules, which are written
    // themselves. A priority from 1 to 16 (ASHRAE 135 clause 19.2) is context tag 4; any other number sends
    // none. Throws SupportInformationException for a property without a row in the support table, and what
    // BuildValue and the tags of a schedule throw.
    std::vector<char> FormWriteMessage(tagReadData const& tag, int invokeId, OpcUa_VariantHlp const& value);

    bool IsCreated() const { return settings->created; }
    TBACnetSettings& Settings() { return *settings; }
    TagTable const& Tags() const { return tags; }
    // The last poll used up its budget. Only the block clears the flag, before each poll.
    bool HasFault() const { return fault; }
    void ClearFault() { fault = false; }

private:
    // The outcome of one attempt to read an object.
    enum class Attempt { Repeat, Failed, Answered };

    void WriteAndDrain(tagReadData const& tag, OpcUa_VariantHlp const& value);

    // Returns false, and logs the reason, if a text is not an address.
    bool TrySetAddresses(std::string const& address, std::string const& mac);
    void SetAddresses(std::string const& address, std::string const& mac);
    void SetLimits(int timeout, int countRepeat, int priority);
    int Exchange(std::vector<char> const& frame, std::vector<char>& apdu);

    Attempt TryRead(ObjectIdentifier object, std::vector<tagReadData*> const& tags,
                    std::vector<WriteDataRec>& values);
    Attempt ReadOnce(ObjectIdentifier object, std::vector<tagReadData*> const& tags,
                     std::vector<WriteDataRec>& values);
    // Null if no datagram came, or one without an APDU. Any other answer than a ComplexAck throws.
    std::unique_ptr<ComplexAck> RequestAck(Network::NDataUnitRequest const& request);
    std::unique_ptr<PDU> CollectSegments(std::unique_ptr<ComplexAck> first);
    Network::NDataUnitRequest SegmentAck(char sequenceNumber);

    void DeliverValues(ObjectIdentifier object, ReadPropertyMultipleAck const& ack,
                       std::vector<tagReadData*> const& tags, std::vector<WriteDataRec>& values);

    std::unique_ptr<TBACnetSettings> settings;
    TagTable tags;
    NLSocket* socket;
    std::unique_ptr<sockaddr_in> peer;
    // The number of the task, for the socket trace of the host.
    unsigned short taskParam;
    int receiveTimeout = ReceiveTimeout;
    bool fault = false;
    // Local time less UTC when the client was made, in units of 100 ns.
    long long localTimeDiff = 0;

    std::size_t tagCount = 0;
};

}  // namespace dorvel::BACnet
