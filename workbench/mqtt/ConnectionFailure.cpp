#include "ConnectionFailure.h"

#include <mosquitto.h>
#include <netdb.h>

#include <cerrno>
#include <cstring>
#include <string_view>

#include "Printable.h"

namespace workbench {

namespace {

ConnectionFailure Waiting(std::string text) {
    return {OutletHealth::Waiting, std::move(text)};
}

ConnectionFailure Failed(std::string text) {
    return {OutletHealth::Failed, std::move(text)};
}

struct Alert {
    std::string_view part;  // of the line
    char const* text;
};

// The first that the line has counts.
constexpr Alert Alerts[] = {
    {"alert unknown ca",
     "the broker does not trust the certificate of --mqtt-cert; give one that its authority has signed"},
    {"alert certificate required",
     "the broker asks for a certificate of its clients; give one with --mqtt-cert FILE and --mqtt-key FILE"},
    {"alert handshake failure",
     "the broker ended the TLS handshake; it may ask for a certificate of its clients (--mqtt-cert FILE and "
     "--mqtt-key FILE), or have no cipher in common with this machine"},
    {"alert certificate expired", "the broker says that the certificate of --mqtt-cert has expired"},
    {"alert certificate revoked", "the broker says that the certificate of --mqtt-cert is revoked"},
    {"alert bad certificate", "the broker does not accept the certificate of --mqtt-cert"},
    {"alert unsupported certificate", "the broker does not accept the kind of certificate of --mqtt-cert"},
    {"alert protocol version", "the broker has no TLS 1.2 or newer"},
    {"unsupported protocol", "the broker has no TLS 1.2 or newer"},
    {"wrong version number",
     "the broker does not speak TLS at this port; use mqtt:// without TLS, or the port for TLS, often 8883"},
    {"alert", "the broker ended the TLS handshake"},
};

}  // namespace

ConnectionFailure SocketFailure(int systemError) {
    switch (systemError) {
        case ECONNREFUSED:
            return Waiting("nobody accepts connections there; is the broker running, and is the port right?");
        case ETIMEDOUT:
            return Waiting("no answer; is the address right, and does a firewall drop the datagrams?");
        case EHOSTUNREACH:
        case ENETUNREACH:
        case ENETDOWN:
        case EADDRNOTAVAIL:
            return Waiting("no way to this address from this machine; is the network there?");
        case ECONNRESET:
        case EPIPE:
            return Waiting("the connection was cut off");
        default:
            return Waiting(std::string("the network reports: ") + std::strerror(systemError));
    }
}

ConnectionFailure LookupFailure(int error, int systemError, std::string const& host) {
    if (error == EAI_AGAIN) {
        return Waiting("no name server answers for the host " + tools::Quoted(host));
    }
    if (error == EAI_SYSTEM) {
        return Waiting("the host " + tools::Quoted(host) +
                       " cannot be looked up: " + std::strerror(systemError));
    }
    bool const isUnknown = error == EAI_NONAME || error == EAI_NODATA || error == EAI_ADDRFAMILY;
    return Waiting("the host " + tools::Quoted(host) +
                   (isUnknown ? " is not known to the name service"
                              : std::string(" cannot be looked up: ") + gai_strerror(error)));
}

ConnectionFailure AnswerFailure(int returnCode, std::string const& clientId, bool hasLogin) {
    switch (returnCode) {
        case 1:
            return Failed("the broker does not support MQTT 3.1.1");
        case 2:
            return Failed("the broker does not accept the client id " + tools::Quoted(clientId) +
                          "; choose another node with --mqtt-node");
        case 3:
            return Waiting("the broker says that its service is not available");
        case 4:
        case 5:
            return Failed(hasLogin ? "the broker does not accept the user and the password of --mqtt-login"
                                   : "the broker does not let anybody in without a user and a password; give "
                                     "them with --mqtt-login FILE");
        default:
            return Failed("the broker refused the connection with code " + std::to_string(returnCode));
    }
}

ConnectionFailure LibraryFailure(int code, bool wasConnected, bool isTls) {
    switch (code) {
        case MOSQ_ERR_KEEPALIVE:
            return Waiting("the broker has not answered within the keep alive");
        case MOSQ_ERR_PROTOCOL:
        case MOSQ_ERR_MALFORMED_PACKET:
            return Failed("what answers there does not speak MQTT");
        case MOSQ_ERR_NOMEM:
            return Waiting("not enough memory for a connection");
        default:
            break;
    }
    if (wasConnected) {
        return Waiting("the connection was cut off");
    }
    return Waiting(
        isTls ? "the connection was closed during the TLS handshake; is this a port for TLS?"
              : "the connection was closed before an answer; is it a broker, and a port without TLS?");
}

ConnectionFailure HandshakeFailure(std::string const& line) {
    if (line.find("OpenSSL Error") != std::string::npos) {
        for (Alert const& alert : Alerts) {
            if (line.find(alert.part) != std::string::npos) {
                return Failed(alert.text);
            }
        }
    }
    return {};
}

}  // namespace workbench
