#include "TBACnet.h"

#include <exception>
#include <utility>

#include "AnswerStore.h"
#include "CodeMaps.h"
#include "Network/AddressParser.h"
#include "UserTrace.h"
#include "dorvelshare/RTime.h"
#include "dorvelshare/Trace.h"

namespace dorvel::BACnet {

std::atomic<unsigned char> WriteInvokeId{0};
std::atomic<bool> TBACnet::IsTerminated{false};

namespace {

// The number of local ports that a client behind a router tries.
constexpr int PortsToTry = 20;

// Reserves memory for the records, so that they do not move while they are appended. It is not needed:
// without memory for all at once there may be enough for each.
void MakeRoom(std::vector<WriteDataRec>& values, std::size_t count) {
    try {
        values.reserve(values.size() + count);
    } catch (std::exception const&) {
    }
}

}  // namespace

TBACnet::TBACnet(NLSocket& deviceSocket, sockaddr_in* devicePeer, unsigned short task, std::string address,
                 std::string mac, int timeout, int countRepeat, int addressNumber, int networkNumber,
                 int priority)
    : settings(std::make_unique<TBACnetSettings>()), socket(&deviceSocket), taskParam(task) {
    settings->addressNumber = addressNumber;
    settings->networkNumber = static_cast<std::uint16_t>(networkNumber);
    settings->remoteAddress.network = static_cast<std::uint16_t>(networkNumber);
    if (TrySetAddresses(address, mac)) {
        SetLimits(timeout, countRepeat, priority);
    }
    peer.reset(devicePeer);
}

bool TBACnet::TrySetAddresses(std::string const& address, std::string const& mac) {
    try {
        SetAddresses(address, mac);
        return true;
    } catch (std::exception const& failure) {
        logMsgLn(failure.what());
    } catch (...) {
        logMsgLn("Unknown error");
    }
    return false;
}

void TBACnet::SetLimits(int timeout, int countRepeat, int priority) {
    settings->timeout = static_cast<std::uint16_t>(timeout);
    settings->repeatCount = static_cast<std::uint16_t>(countRepeat);
    settings->repeatCountCopy = settings->repeatCount;
    settings->errorLimit = settings->repeatCount;
    settings->ReadInvokeId = 0;
    localTimeDiff = GetLocalTimeDiff();
    settings->created = true;
    settings->priority = priority;
}

TBACnet::~TBACnet() {
    if (socket->open != 0) {
        NLCloseSocket(socket);
    }
    for (auto const& [type, objects] : tags) {
        for (auto const& [number, objectTags] : objects) {
            for (tagReadData const* tag : objectTags) {
                delete tag;
            }
        }
    }
}

void TBACnet::SetAddresses(std::string const& address, std::string const& mac) {
    std::vector<char> device = Network::AddressParser::ParseAddress(mac);
    if (settings->remoteAddress.network == 0) {
        settings->linkAddress = std::move(device);
        return;
    }
    NLTryOpenUDPSocket(socket, static_cast<unsigned short>(socket->port + 1), PortsToTry);
    std::vector<char> router = Network::AddressParser::ParseAddress(address);
    settings->remoteAddress.bytes = std::move(device);
    settings->linkAddress = std::move(router);
}

void TBACnet::InitTags(std::vector<VelaBufferParameters*> const& params) {
    InitObjectTypesMap();
    for (VelaBufferParameters* param : params) {
        auto address = std::make_unique<tagAddress>();
        address->objectNumber = param->objectNumber;
        address->objectType = GetBacnetObjectType(param->objectType);
        address->propertyId = GetPropertyType(param->objectProperties);
        auto tag = std::make_unique<tagReadData>();
        auto& objects = tags[address->objectType];
        // Most projects list objects by ascending number: the end is a good hint.
        objects.try_emplace(objects.end(), address->objectNumber)->second.push_back(tag.get());
        // The ownership of the descriptor moves only when nothing can throw any more.
        tag->address = address.release();
        tag->descriptor = std::exchange(param->descriptor, nullptr);
        tag.release();
        ++tagCount;
    }
}

void TBACnet::Read(std::vector<WriteDataRec>& values) {
    AnswerStore const answersOfThisPoll;
    MakeRoom(values, tagCount);
    Trace("read start\n");
    int budget = settings->errorLimit;
    for (auto const& [type, objects] : tags) {
        for (auto const& [number, objectTags] : objects) {
            if (IsTerminated.load(std::memory_order_relaxed)) {
                return;
            }
            Trace("Object type %d number %d\n", static_cast<int>(type), number);
            ObjectIdentifier const object(type, static_cast<unsigned int>(number));
            bool const answered = ProcessTagM(object, objectTags, values) != 0;
            budget = answered ? settings->errorLimit : budget - settings->repeatCount;
            if (budget <= 0) {
                Trace("Error limit exceeded\n");
                fault = true;
                return;
            }
        }
    }
    Trace("read done\n");
}

}  // namespace dorvel::BACnet
