#pragma once

#include <string>

#include "OutletState.h"

namespace workbench {

// Why a connection failed or ended, for people: what happened and what to do.
struct ConnectionFailure {
    // Failed for what nobody but a person can change, such as a wrong password. Attempts go on all the same:
    // it may be changed at the broker.
    OutletHealth health = OutletHealth::Waiting;
    std::string text;
};

// An errno of a socket.
ConnectionFailure SocketFailure(int systemError);
// An error of getaddrinfo for a host. The errno counts for EAI_SYSTEM.
ConnectionFailure LookupFailure(int error, int systemError, std::string const& host);
// The return code of a CONNACK, not 0 (MQTT 3.1.1, 3.2.2.3).
ConnectionFailure AnswerFailure(int returnCode, std::string const& clientId, bool hasLogin);
// An error code of the library, for a connection that was there or not yet.
ConnectionFailure LibraryFailure(int code, bool wasConnected, bool isTls);
// A line of the library's log about a TLS handshake, "OpenSSL Error[0]: error:...:alert unknown ca". Empty
// text if it is about anything else.
ConnectionFailure HandshakeFailure(std::string const& line);

}  // namespace workbench
