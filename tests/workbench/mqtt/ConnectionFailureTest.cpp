#include "ConnectionFailure.h"

#include <gtest/gtest.h>
#include <mosquitto.h>
#include <netdb.h>

#include <cerrno>

namespace {

using workbench::AnswerFailure;
using workbench::HandshakeFailure;
using workbench::LibraryFailure;
using workbench::LookupFailure;
using workbench::OutletHealth;
using workbench::SocketFailure;

bool Has(std::string const& text, char const* part) {
    return text.find(part) != std::string::npos;
}

TEST(ConnectionFailure, SaysWhatTheNetworkReports) {
    EXPECT_TRUE(Has(SocketFailure(ECONNREFUSED).text, "is the broker running"));
    EXPECT_TRUE(Has(SocketFailure(ETIMEDOUT).text, "no answer"));
    EXPECT_TRUE(Has(SocketFailure(ENETUNREACH).text, "no way to this address"));
    EXPECT_TRUE(Has(SocketFailure(ECONNRESET).text, "cut off"));
    EXPECT_TRUE(Has(SocketFailure(EMFILE).text, "Too many open files"));
    EXPECT_EQ(SocketFailure(ECONNREFUSED).health, OutletHealth::Waiting);
}

TEST(ConnectionFailure, NamesAHostThatIsNotKnown) {
    EXPECT_EQ(LookupFailure(EAI_NONAME, 0, "brocker").text,
              "the host \"brocker\" is not known to the name service");
    EXPECT_TRUE(Has(LookupFailure(EAI_AGAIN, 0, "broker").text, "no name server answers"));
    EXPECT_TRUE(Has(LookupFailure(EAI_SYSTEM, ENOMEM, "broker").text, "Cannot allocate memory"));
    EXPECT_TRUE(Has(LookupFailure(EAI_FAIL, 0, "broker").text, "cannot be looked up"));
}

TEST(ConnectionFailure, LeavesToAPersonWhatTheBrokerDoesNotAccept) {
    EXPECT_EQ(AnswerFailure(1, "id", false).health, OutletHealth::Failed);
    EXPECT_TRUE(Has(AnswerFailure(2, "dorvel-a", false).text, "\"dorvel-a\""));
    EXPECT_EQ(AnswerFailure(3, "id", false).health, OutletHealth::Waiting);
    EXPECT_TRUE(Has(AnswerFailure(4, "id", true).text, "does not accept the user and the password"));
    EXPECT_TRUE(Has(AnswerFailure(5, "id", false).text, "give them with --mqtt-login FILE"));
    EXPECT_TRUE(Has(AnswerFailure(77, "id", false).text, "code 77"));
}

TEST(ConnectionFailure, TellsAConnectionThatCameFromOneThatDidNot) {
    EXPECT_EQ(LibraryFailure(MOSQ_ERR_CONN_LOST, true, true).text, "the connection was cut off");
    EXPECT_TRUE(Has(LibraryFailure(MOSQ_ERR_CONN_LOST, false, false).text, "a port without TLS?"));
    EXPECT_TRUE(Has(LibraryFailure(MOSQ_ERR_CONN_LOST, false, true).text, "is this a port for TLS?"));
    EXPECT_TRUE(Has(LibraryFailure(MOSQ_ERR_KEEPALIVE, true, false).text, "keep alive"));
    EXPECT_TRUE(Has(LibraryFailure(MOSQ_ERR_PROTOCOL, false, false).text, "does not speak MQTT"));
}

TEST(ConnectionFailure, ReadsTheReasonOfAHandshake) {
    std::string const begin = "OpenSSL Error[0]: error:0A000086:SSL routines::";
    EXPECT_TRUE(Has(HandshakeFailure(begin + "tlsv13 alert certificate required").text, "--mqtt-cert FILE"));
    EXPECT_TRUE(
        Has(HandshakeFailure(begin + "tlsv1 alert unknown ca").text, "does not trust the certificate"));
    EXPECT_TRUE(
        Has(HandshakeFailure(begin + "wrong version number").text, "does not speak TLS at this port"));
    EXPECT_TRUE(Has(HandshakeFailure(begin + "tlsv1 alert internal error").text, "ended the TLS handshake"));
    EXPECT_EQ(HandshakeFailure(begin + "certificate verify failed").text, "");
    EXPECT_EQ(HandshakeFailure("Client dorvel-alert sending CONNECT").text, "");
}

}  // namespace
