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

// The invoke id of the latest write, 255 followed by 0. Read and assigned like an octet, by any thread. One
// for all devices of the process, unlike that of reads: blocks on different threads take distinct numbers
// from it, but an answer is held against the number that was given out last, also when that went to another
// block.
extern std::atomic<unsigned char> WriteInvokeId;

// Whether an answer is the SimpleAck of the latest write; the tag is not looked at. An Error or a Reject of
// it throws ErrorResponseException or RejectResponseException; anything else, an Abort of it too, is not its
// answer. Throws std::bad_cast for a PDU of another class than its type's.
bool ProcessWriteResponse(PDU& pdu, tagReadData const& tag);

// The client of one device: its addressing and limits, the tags that are read from it, and the poll over
// them. It belongs to the task that runs its block: all operations are called there, one at a time, and those
// that send wait for the answer.
class TBACnet {
public:
    // Tags by object type, within it by object number, within that in the order of configuration.
    using TagTable = std::map<ObjectTypeEnum, std::map<int, std::vector<tagReadData*>>>;

    // Milliseconds to wait for one datagram, whatever time-out the block is given.
    static constexpr int ReceiveTimeout = 1000;

    // The runtime stops: all polls end before their next object. Read and assigned like a bool, by any
    // thread.
    static std::atomic<bool> IsTerminated;

    // The socket stays the caller's and has to outlive the client. peer, where every datagram goes, becomes
    // the client's when the constructor returns; if it throws, for lack of memory, peer stays the caller's.
    // The two texts (Network::AddressParser has their grammar) change their roles with the network number, of
    // which the low 16 bits count:
    //   0      the device is mac; address is not looked at and no socket is opened
    //   other  the device is mac on that network, behind the router that address names; the socket is opened
    //          on the first free one of 20 ports above the one that its record holds
    // A text that is no address is logged and leaves a client that is not IsCreated().
    TBACnet(NLSocket& socket, sockaddr_in* peer, unsigned short taskParam, std::string address,
            std::string mac, int timeout, int countRepeat, int addressNumber, int networkNumber,
            int priority);
    TBACnet(TBACnet const&) = delete;
    TBACnet& operator=(TBACnet const&) = delete;
    // Closes the socket if it is open and deletes the tags.
    ~TBACnet();

    // Enters the variables into the tag table and takes their descriptors over, of which the records keep
    // none; the records stay the caller's. Codes are not checked (CodeMaps.h says what becomes of unknown
    // ones), nor are duplicates found. If it throws, for lack of memory, the records whose descriptors it did
    // not take still have them, and the client can only be destroyed.
    void InitTags(std::vector<VelaBufferParameters*> const& params);

    // One poll of all tags: an exchange per object, by ascending type and number, whose values are appended.
    // An object that fails takes repeatCount from the budget of errorLimit, one that answers restores it;
    // with nothing left of it the poll ends and the fault flag is set. As both numbers are the block's
    // CountRepeat, the first failed object ends the poll. Ends at once, without a fault, when the runtime
    // stops.
    void Read(std::vector<WriteDataRec>& values);

    // Reads one object, the tags' own, in up to repeatCount attempts, and appends what came. 0 when the
    // device did not take part: no attempt was answered, or an answer in segments was unusable. 1 when it
    // did: values were delivered, or were refused in a way that a repetition cannot mend. Throws nothing of a
    // transaction.
    int ProcessTagM(ObjectIdentifier object, std::vector<tagReadData*> const& tags,
                    std::vector<WriteDataRec>& values);

    // Sends the request to the peer and waits for one datagram, whoever sent it. The result is the number of
    // octets that came; 0 or less when none did, and then apdu stays as it was, else it becomes the
    // datagram's APDU. Throws std::runtime_error "packet format error" for what is no BVLC frame that carries
    // an NPDU, "packet size error" for one whose length field is wrong, and what Network::Message::Parse
    // throws.
    int SendAndReceive(Network::NDataUnitRequest const& request, std::vector<char>& apdu);
    // The same without sending: takes a further datagram.
    int Receive(std::vector<char>& apdu);

    // Turns an answer into records, one for each property that a tag asked for; of several tags for one
    // property the first gets it. Set status flags make the quality of Present_Value, and of nothing else, a
    // sensor failure. 1 when the answer was processed, 0 when it is not the awaited one.
    // Throws ErrorResponseException, RejectResponseException or AbortResponseException for such an answer to
    // this invoke id, SupportInformationException for a property without a row in the support table, and
    // std::bad_cast for a service or a value of another class than awaited. Records made before stay.
    int ProcessResponseM(ObjectIdentifier object, char const& readInvokeId, PDU& pdu,
                         std::vector<tagReadData*> const& tags, std::vector<WriteDataRec>& values);

    // Fills a fresh record: target from the descriptor, and the value as the type has it delivered, in the
    // declared type of the variable. A DataValue carries the status and the time now; a type that is not
    // delivered leaves the value empty. std::bad_cast for a value of another class than the type's.
    void ProcessResponseForTag(PropertyTypeEnum type, DriverVarDsc const* descriptor, CPropertyValue& value,
                               unsigned int status, WriteDataRec& record);

    // Writes a value of the runtime to the tag's object, with the priority of the settings. All that goes
    // wrong, a refusal of the device included, is logged and nothing else: a write is never repeated.
    void Write(tagReadData* tag, OpcUa_VariantHlp& value);
    // The same; the layer carries nothing. Whatever is answered first, it goes on to receive until the answer
    // to the write or nothing comes, so that no stale datagram is left for the next read. A write costs a
    // further receive time-out for that.
    void ProcessWriteTag(tagReadData const& tag, Network::Layer& layer, OpcUa_VariantHlp const& value);
    // The write under the next invoke id, which is used up even if the value is refused. Throws as
    // FormWriteMessage does.
    Network::NDataUnitRequest FormWriteRequest(tagReadData const& tag, std::vector<char> const& linkAddress,
                                               Network::Address const& remoteAddress,
                                               OpcUa_VariantHlp const& value);
    // The APDU of one WriteProperty. The value is of the type of the tag's property, yet only the three
    // constants of a loop and the two schedules are written themselves: instead of any other property it is
    // Present_Value. A priority from 1 to 16 (ASHRAE 135 clause 19.2) is context tag 4, others send none.
    // Throws SupportInformationException for a property without a row in the support table, and what
    // BuildValue and the tags of a schedule throw.
    std::vector<char> FormWriteMessage(tagReadData const& tag, int invokeId, OpcUa_VariantHlp const& value);

    bool IsCreated() const { return settings->created; }
    TBACnetSettings& Settings() { return *settings; }
    TagTable const& Tags() const { return tags; }
    // The last poll ran out of its budget. Only the block clears it, before each poll.
    bool HasFault() const { return fault; }
    void ClearFault() { fault = false; }

private:
    // How one attempt to read an object ended.
    enum class Attempt { Repeat, Failed, Answered };

    void WriteAndDrain(tagReadData const& tag, OpcUa_VariantHlp const& value);

    // False, with the reason in the log, when a text is not an address.
    bool TrySetAddresses(std::string const& address, std::string const& mac);
    void SetAddresses(std::string const& address, std::string const& mac);
    void SetLimits(int timeout, int countRepeat, int priority);
    int Exchange(std::vector<char> const& frame, std::vector<char>& apdu);

    Attempt TryRead(ObjectIdentifier object, std::vector<tagReadData*> const& tags,
                    std::vector<WriteDataRec>& values);
    Attempt ReadOnce(ObjectIdentifier object, std::vector<tagReadData*> const& tags,
                     std::vector<WriteDataRec>& values);
    std::unique_ptr<ComplexAck> RequestAck(Network::NDataUnitRequest const& request);
    std::unique_ptr<PDU> CollectSegments(std::unique_ptr<ComplexAck> first);
    Network::NDataUnitRequest SegmentAck(char sequenceNumber);

    void DeliverValues(ObjectIdentifier object, ReadPropertyMultipleAck const& ack,
                       std::vector<tagReadData*> const& tags, std::vector<WriteDataRec>& values);

    std::unique_ptr<TBACnetSettings> settings;
    TagTable tags;
    NLSocket* socket;
    std::unique_ptr<sockaddr_in> peer;
    // Number of the task, for the host's trace of its sockets.
    unsigned short taskParam;
    int receiveTimeout = ReceiveTimeout;
    bool fault = false;
    // Local time less UTC when the client was made, in units of 100 ns.
    long long localTimeDiff = 0;

    std::size_t tagCount = 0;
};

}  // namespace dorvel::BACnet
