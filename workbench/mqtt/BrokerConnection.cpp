#include "BrokerConnection.h"

#include <mosquitto.h>
#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace workbench {

namespace {

// Packets that are read or written in one turn.
constexpr int MostPackets = 100;
// Of quality of service 1 that wait for their acknowledgements; the library keeps those beyond.
constexpr unsigned MostUnacknowledged = 500;

int ErrorOf(int socket) {
    int error = 0;
    socklen_t size = sizeof error;
    getsockopt(socket, SOL_SOCKET, SO_ERROR, &error, &size);
    return error;
}

}  // namespace

struct BrokerConnection::Callbacks {
    static BrokerConnection& Of(void* self) { return *static_cast<BrokerConnection*>(self); }

    static void Set(mosquitto* handle) {
        mosquitto_connect_callback_set(handle,
                                       [](mosquitto*, void* self, int code) { Of(self).Answered(code); });
        mosquitto_disconnect_callback_set(handle,
                                          [](mosquitto*, void* self, int code) { Of(self).FailOf(code); });
        mosquitto_publish_callback_set(handle,
                                       [](mosquitto*, void* self, int id) { Of(self).Published(id); });
        mosquitto_subscribe_callback_set(handle,
                                         [](mosquitto*, void* self, int id, int count, int const* granted) {
                                             Of(self).Subscribed(id, count < 1 || granted[0] > 2);
                                         });
        mosquitto_message_callback_set(handle, [](mosquitto*, void* self, mosquitto_message const* message) {
            Of(self).received.push_back({message->topic,
                                         std::string(static_cast<char const*>(message->payload),
                                                     static_cast<std::size_t>(message->payloadlen)),
                                         message->retain});
        });
        mosquitto_log_callback_set(
            handle, [](mosquitto*, void* self, int, char const* line) { Of(self).Logged(line); });
    }
};

void BrokerConnection::Freed::operator()(mosquitto* used) const {
    mosquitto_destroy(used);
}

BrokerConnection::BrokerConnection(BrokerSettings const& brokerSettings, TlsContext* tlsContext)
    : settings(brokerSettings), tls(tlsContext) {
    mosquitto_lib_init();
}

BrokerConnection::~BrokerConnection() {
    handle.reset();
    mosquitto_lib_cleanup();
}

void BrokerConnection::Begin(std::string const& address, Message const& will,
                             std::vector<std::string> const& newFilters) {
    Drop();
    failure = {};
    handshake = {};
    socketError = 0;
    filters = newFilters;
    refusedFilters.clear();
    received.clear();
    begun = Clock::now();
    // A new one for each connection: the library would send what an old one had not sent again.
    handle.reset(mosquitto_new(settings.clientId.c_str(), true, this));
    if (!handle) {
        FailOf(MOSQ_ERR_NOMEM);
        return;
    }
    phase = Phase::Connecting;
    Prepare(will);
    int const result = mosquitto_connect_async(handle.get(), address.c_str(), settings.address.port,
                                               static_cast<int>(settings.keepAlive.count()));
    if (result == MOSQ_ERR_ERRNO) {
        Fail(SocketFailure(errno));
    } else if (result != MOSQ_ERR_SUCCESS && result != MOSQ_ERR_CONN_PENDING) {
        FailOf(result);
    }
}

void BrokerConnection::Prepare(Message const& will) {
    Callbacks::Set(handle.get());
    mosquitto_int_option(handle.get(), MOSQ_OPT_PROTOCOL_VERSION, MQTT_PROTOCOL_V311);
    mosquitto_int_option(handle.get(), MOSQ_OPT_TCP_NODELAY, 1);
    mosquitto_max_inflight_messages_set(handle.get(), MostUnacknowledged);
    mosquitto_will_set(handle.get(), will.topic.c_str(), static_cast<int>(will.payload.size()),
                       will.payload.data(), will.qos, will.isRetained);
    if (!settings.login.user.empty()) {
        mosquitto_username_pw_set(handle.get(), settings.login.user.c_str(), settings.login.password.c_str());
    }
    if (tls) {
        tls->Begin();
        // Otherwise the library sets the context up by settings of its own, and fails without them.
        mosquitto_int_option(handle.get(), MOSQ_OPT_SSL_CTX_WITH_DEFAULTS, 0);
        mosquitto_void_option(handle.get(), MOSQ_OPT_SSL_CTX, tls->Handle());
    }
}

void BrokerConnection::Serve(std::chrono::milliseconds longest, int wakeHandle) {
    pollfd waits[2] = {{wakeHandle, POLLIN, 0}, {-1, 0, 0}};
    if (phase != Phase::Closed) {
        waits[1].fd = mosquitto_socket(handle.get());
        waits[1].events = POLLIN;
        if (mosquitto_want_write(handle.get())) {
            waits[1].events |= POLLOUT;
        }
    }
    poll(waits, 2, static_cast<int>(longest.count()));
    if (phase != Phase::Closed) {
        Turn(waits[1].revents);
    }
    if (phase != Phase::Closed) {
        CheckTimes();
    }
    if (phase == Phase::Closed) {
        Drop();
    }
}

void BrokerConnection::Turn(short events) {
    socketError = (events & (POLLERR | POLLHUP)) != 0 ? ErrorOf(mosquitto_socket(handle.get())) : 0;
    bool const hasNews = (events & (POLLIN | POLLERR | POLLHUP)) != 0;
    int result = MOSQ_ERR_SUCCESS;
    // TLS reads to make its handshake, and may have octets that the socket has no longer.
    if (tls || hasNews) {
        result = mosquitto_loop_read(handle.get(), MostPackets);
    }
    // A broker that does not accept a certificate sends the reason and closes the connection, perhaps after
    // the handshake: writing would fail before the reason is read. The next turn writes.
    bool const mayWrite = !(tls && hasNews && phase == Phase::Connecting);
    if (result == MOSQ_ERR_SUCCESS && mayWrite && phase != Phase::Closed &&
        mosquitto_want_write(handle.get())) {
        result = mosquitto_loop_write(handle.get(), MostPackets);
    }
    if (result == MOSQ_ERR_SUCCESS && phase != Phase::Closed) {
        result = mosquitto_loop_misc(handle.get());
    }
    if (result == MOSQ_ERR_SUCCESS && socketError != 0) {
        result = MOSQ_ERR_CONN_LOST;
    }
    if (result != MOSQ_ERR_SUCCESS && phase != Phase::Closed) {
        FailOf(result);
    }
}

void BrokerConnection::CheckTimes() {
    Clock::time_point const now = Clock::now();
    if (phase != Phase::Connected) {
        if (now - begun > LongestBegin) {
            Fail({OutletHealth::Waiting, "no answer within " + std::to_string(LongestBegin.count()) +
                                             " s; is it a broker, and does a firewall drop the datagrams?"});
        }
        return;
    }
    if (inFlight.Messages() == 0) {
        moved = now;
    } else if (now - moved > settings.keepAlive) {
        Fail({OutletHealth::Waiting,
              "the broker has taken no message for " + std::to_string(settings.keepAlive.count()) + " s"});
    }
}

void BrokerConnection::Answered(int returnCode) {
    if (returnCode != 0) {
        Fail(AnswerFailure(returnCode, settings.clientId, !settings.login.user.empty()));
        return;
    }
    phase = Phase::Subscribing;
    Subscribe();
}

void BrokerConnection::Subscribe() {
    for (std::string const& filter : filters) {
        int id = 0;
        if (mosquitto_subscribe(handle.get(), &id, filter.c_str(), 1) == MOSQ_ERR_SUCCESS) {
            unconfirmed.emplace_back(id, filter);
        } else {
            refusedFilters.push_back(filter);
        }
    }
    if (unconfirmed.empty()) {
        phase = Phase::Connected;
        moved = Clock::now();
    }
}

void BrokerConnection::Subscribed(int id, bool isRefused) {
    auto const found = std::find_if(unconfirmed.begin(), unconfirmed.end(),
                                    [&](auto const& subscription) { return subscription.first == id; });
    if (found == unconfirmed.end()) {
        return;
    }
    if (isRefused) {
        refusedFilters.push_back(found->second);
    }
    unconfirmed.erase(found);
    if (unconfirmed.empty() && phase == Phase::Subscribing) {
        phase = Phase::Connected;
        moved = Clock::now();
    }
}

bool BrokerConnection::HasRoom() const {
    return phase == Phase::Connected && inFlight.HasRoom();
}

void BrokerConnection::Send(Message message) {
    if (phase != Phase::Connected || message.topic.find('\0') != std::string::npos) {
        return;
    }
    int id = 0;
    isSending = true;
    int const result =
        mosquitto_publish(handle.get(), &id, message.topic.c_str(), static_cast<int>(message.payload.size()),
                          message.payload.data(), message.qos, message.isRetained);
    isSending = false;
    if (result == MOSQ_ERR_SUCCESS) {
        inFlight.Sent(id, message.topic.size() + message.payload.size());
    } else if (result != MOSQ_ERR_INVAL && result != MOSQ_ERR_MALFORMED_UTF8 &&
               result != MOSQ_ERR_PAYLOAD_SIZE) {
        FailOf(result);
    }
    for (int const done : std::exchange(sentAtOnce, {})) {
        Published(done);
    }
}

void BrokerConnection::Published(int id) {
    if (isSending) {
        sentAtOnce.push_back(id);
        return;
    }
    inFlight.Done(id);
    moved = Clock::now();
    ++sentCount;
}

std::vector<ReceivedMessage> BrokerConnection::TakeReceived() {
    return std::exchange(received, {});
}

std::size_t BrokerConnection::TakeSentCount() {
    return std::exchange(sentCount, 0);
}

void BrokerConnection::Logged(std::string const& line) {
    ConnectionFailure const known = HandshakeFailure(line);
    if (handshake.text.empty() && !known.text.empty()) {
        handshake = known;
    }
}

// The reason that a peer has given counts more than the end of the connection after it.
void BrokerConnection::FailOf(int code) {
    bool const wasThere = phase == Phase::Connected || phase == Phase::Subscribing;
    bool const isCutOff = socketError == 0 || socketError == ECONNRESET || socketError == EPIPE;
    if (tls && !tls->Mistake().empty()) {
        Fail({OutletHealth::Failed, tls->Mistake()});
    } else if (!handshake.text.empty()) {
        Fail(handshake);
    } else if (!isCutOff) {
        Fail(SocketFailure(socketError));
    } else {
        Fail(LibraryFailure(code, wasThere, tls != nullptr));
    }
}

void BrokerConnection::Fail(ConnectionFailure const& reason) {
    if (phase != Phase::Closed) {
        failure = reason;
    }
    phase = Phase::Closed;
}

void BrokerConnection::Drop() {
    handle.reset();
    phase = Phase::Closed;
    unconfirmed.clear();
    inFlight.Clear();
}

void BrokerConnection::Close() {
    if (phase == Phase::Connected || phase == Phase::Subscribing) {
        mosquitto_disconnect(handle.get());
        if (mosquitto_socket(handle.get()) >= 0) {
            mosquitto_loop_write(handle.get(), MostPackets);
        }
    }
    Fail({OutletHealth::Waiting, "closed"});
    Drop();
}

}  // namespace workbench
