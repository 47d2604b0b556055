#include "Clients.h"

#include <stdexcept>
#include <string_view>

#include "Counting.h"
#include "dorvelshare/Trace.h"

namespace bench {

using dorvel::BACnet::TBACnet;
using dorvel::BACnet::VelaBufferParameters;

namespace {

constexpr char Address[] = "192.168.10.7:47808";
constexpr int Timeout = 1000;
constexpr int WritePriority = 8;

sockaddr_in* MakePeer() {
    auto peer = std::make_unique<sockaddr_in>();
    NLMakeAddress(peer.get(), IPAddressFromString("192.168.10.7"), 47808);
    return peer.release();
}

}  // namespace

struct Clients::Client {
    explicit Client(int attempts)
        : device(Prepare(socket), MakePeer(), 1, Address, Address, Timeout, attempts, 1, 0, WritePriority) {}

    static NLSocket& Prepare(NLSocket& socket) {
        NLInitSocket(&socket);
        return socket;
    }

    void Add(Subject const& asked, int number) {
        for (Subject::Variable const& variable : asked.variables) {
            auto descriptor = std::make_unique<DriverVarDsc>();
            descriptor->ReadId = ++lastId;
            descriptor->ReadType = variable.type;
            VelaBufferParameters parameters{descriptor.release(), asked.objectType, variable.property,
                                            number};
            device.InitTags({&parameters});
        }
    }

    NLSocket socket{};
    TBACnet device;
    long long lastId = 0;
};

Clients::Clients(std::string const& name, int objectsOfEach, int count)
    : subject(SubjectNamed(name)), objects(objectsOfEach * count), network(subject.answers) {
    dorvel::SetLogSink([](std::string_view) {});
    TBACnet::IsTerminated = false;
    bool const isSilent = subject.answers.empty();
    for (int index = 0; index < count; ++index) {
        clients.push_back(std::make_unique<Client>(isSilent ? objectsOfEach : 1));
        for (int number = 1; number <= (isSilent ? 1 : objectsOfEach); ++number) {
            clients.back()->Add(subject, number);
        }
    }
}

Clients::~Clients() {
    clients.clear();
    dorvel::SetLogSink(nullptr);
}

void Clients::Poll() {
    unsigned long const before = network.Requests();
    for (auto const& client : clients) {
        subject.isWritten ? WriteClient(*client) : PollClient(*client);
    }
    if (network.Requests() - before != static_cast<unsigned long>(objects)) {
        throw std::runtime_error("an object was not asked for once");
    }
}

void Clients::PollClient(Client& client) {
    std::size_t records = 0;
    {
        CountingToggled const counted;
        client.device.ClearFault();
        std::vector<WriteDataRec> values;
        client.device.Read(values);
        records = values.size();
    }
    if (client.device.HasFault() != subject.answers.empty() ||
        records != subject.records * static_cast<std::size_t>(objects) / clients.size()) {
        throw std::runtime_error("a poll did not bring every value");
    }
}

void Clients::WriteClient(Client& client) {
    OpcUa_VariantHlp value;
    value.SetDouble(21.5);
    for (auto const& [type, table] : client.device.Tags()) {
        for (auto const& [number, tags] : table) {
            CountingToggled const counted;
            client.device.Write(tags.front(), value);
        }
    }
}

}  // namespace bench
