#include "TlsContext.h"

#include <arpa/inet.h>
#include <openssl/err.h>
#include <openssl/ssl.h>
#include <openssl/x509v3.h>

#include <stdexcept>

#include "Printable.h"

namespace workbench {

namespace {

// A key with a password would make the library ask for it at the terminal.
int NoPassword(char*, int, int, void*) {
    return 0;
}

[[noreturn]] void Refuse(std::string const& path, std::string const& mistake) {
    unsigned long const error = ERR_peek_last_error();
    char const* const reason = error == 0 ? nullptr : ERR_reason_error_string(error);
    ERR_clear_error();
    throw std::runtime_error(path + ": " + mistake + (reason ? std::string(" (") + reason + ")" : ""));
}

// "2026-11-23", in UTC.
std::string DayOf(ASN1_TIME const* time) {
    tm day{};
    if (!time || ASN1_TIME_to_tm(time, &day) != 1) {
        return "an unknown day";
    }
    char text[32];
    return std::string(text, strftime(text, sizeof text, "%Y-%m-%d", &day));
}

// The names and addresses that a certificate is for, with commas between them.
std::string NamesOf(X509* certificate) {
    std::string text;
    auto* const names =
        static_cast<GENERAL_NAMES*>(X509_get_ext_d2i(certificate, NID_subject_alt_name, nullptr, nullptr));
    for (int i = 0; i < sk_GENERAL_NAME_num(names); ++i) {
        GENERAL_NAME const* const name = sk_GENERAL_NAME_value(names, i);
        char address[INET6_ADDRSTRLEN] = "";
        if (name->type == GEN_DNS) {
            auto const* const octets = reinterpret_cast<char const*>(ASN1_STRING_get0_data(name->d.dNSName));
            text += (text.empty() ? "" : ", ") +
                    std::string(octets, static_cast<std::size_t>(ASN1_STRING_length(name->d.dNSName)));
        } else if (name->type == GEN_IPADD) {
            int const family = ASN1_STRING_length(name->d.iPAddress) == 4 ? AF_INET : AF_INET6;
            inet_ntop(family, ASN1_STRING_get0_data(name->d.iPAddress), address, sizeof address);
            text += (text.empty() ? "" : ", ") + std::string(address);
        }
    }
    GENERAL_NAMES_free(names);
    return text.empty() ? "no host" : tools::Printable(text, 200);
}

}  // namespace

void TlsContext::Freed::operator()(SSL_CTX* used) const {
    SSL_CTX_free(used);
}

TlsContext::TlsContext(TlsFiles const& tlsFiles, std::string const& tlsHost)
    : files(tlsFiles), host(tlsHost), context(SSL_CTX_new(TLS_client_method())) {
    if (!context) {
        throw std::runtime_error("TLS cannot be used on this machine: the library does not start");
    }
    SSL_CTX_set_app_data(context.get(), this);
    SSL_CTX_set_min_proto_version(context.get(), TLS1_2_VERSION);
    SSL_CTX_set_verify(context.get(), SSL_VERIFY_PEER, Verified);
    SSL_CTX_set_default_passwd_cb(context.get(), NoPassword);
    ExpectHost();
    ReadFiles();
}

void TlsContext::ExpectHost() {
    X509_VERIFY_PARAM* const expected = SSL_CTX_get0_param(context.get());
    isAddress = X509_VERIFY_PARAM_set1_ip_asc(expected, host.c_str()) == 1;
    ERR_clear_error();
    if (!isAddress) {
        X509_VERIFY_PARAM_set_hostflags(expected, X509_CHECK_FLAG_NO_PARTIAL_WILDCARDS);
        X509_VERIFY_PARAM_set1_host(expected, host.c_str(), host.size());
        // The library knows the broker by its address only, which it would send here.
        SSL_CTX_set_info_callback(context.get(), Reached);
    }
}

void TlsContext::ReadFiles() {
    if (files.authorities.empty()) {
        SSL_CTX_set_default_verify_paths(context.get());
    } else if (SSL_CTX_load_verify_locations(context.get(), files.authorities.c_str(), nullptr) != 1) {
        Refuse(files.authorities,
               "cannot be read as certificates of authorities; expected is a PEM file for --mqtt-ca");
    }
    if (files.certificate.empty()) {
        return;
    }
    if (SSL_CTX_use_certificate_chain_file(context.get(), files.certificate.c_str()) != 1) {
        Refuse(files.certificate, "cannot be read as a certificate; expected is a PEM file for --mqtt-cert");
    }
    if (SSL_CTX_use_PrivateKey_file(context.get(), files.key.c_str(), SSL_FILETYPE_PEM) != 1) {
        Refuse(files.key, "cannot be read as the key of " + files.certificate +
                              "; expected is a PEM file without a password for --mqtt-key");
    }
}

int TlsContext::Verified(int isGood, X509_STORE_CTX* chain) {
    auto* const connection =
        static_cast<SSL*>(X509_STORE_CTX_get_ex_data(chain, SSL_get_ex_data_X509_STORE_CTX_idx()));
    auto* const self = static_cast<TlsContext*>(SSL_CTX_get_app_data(SSL_get_SSL_CTX(connection)));
    if (isGood == 0 && self->mistake.empty()) {
        self->mistake = self->MistakeOf(chain);
    }
    return isGood;
}

void TlsContext::Reached(SSL const* connection, int where, int) {
    if ((where & SSL_CB_HANDSHAKE_START) != 0) {
        auto* const self = static_cast<TlsContext*>(SSL_CTX_get_app_data(SSL_get_SSL_CTX(connection)));
        // The name has to be there before the first message is made, and the library makes the connection.
        SSL_set_tlsext_host_name(const_cast<SSL*>(connection), self->host.c_str());
    }
}

std::string TlsContext::MistakeOf(X509_STORE_CTX* chain) const {
    X509* const certificate = X509_STORE_CTX_get_current_cert(chain);
    int const error = X509_STORE_CTX_get_error(chain);
    std::string const which = X509_STORE_CTX_get_error_depth(chain) == 0
                                  ? "the certificate of the broker"
                                  : "a certificate of an authority of the broker";
    switch (error) {
        case X509_V_ERR_CERT_HAS_EXPIRED:
            return which + " has expired on " + DayOf(X509_get0_notAfter(certificate)) +
                   "; the broker needs a new one, or the clock of this machine is wrong";
        case X509_V_ERR_CERT_NOT_YET_VALID:
            return which + " is not valid before " + DayOf(X509_get0_notBefore(certificate)) +
                   "; is the clock of this machine right?";
        case X509_V_ERR_HOSTNAME_MISMATCH:
        case X509_V_ERR_IP_ADDRESS_MISMATCH:
            return which + " is not for " + tools::Quoted(host) + " but for " + NamesOf(certificate) +
                   "; use a host of the certificate in the address, or have a certificate made for this one";
        case X509_V_ERR_UNABLE_TO_GET_ISSUER_CERT:
        case X509_V_ERR_UNABLE_TO_GET_ISSUER_CERT_LOCALLY:
        case X509_V_ERR_UNABLE_TO_VERIFY_LEAF_SIGNATURE:
        case X509_V_ERR_DEPTH_ZERO_SELF_SIGNED_CERT:
        case X509_V_ERR_SELF_SIGNED_CERT_IN_CHAIN:
            return "the certificate of the broker is not signed by an authority " +
                   (files.authorities.empty()
                        ? "that this machine trusts; give that of the broker with "
                          "--mqtt-ca FILE"
                        : "in " + files.authorities + "; is that the authority of this broker?");
        default:
            return which + " is not accepted: " + X509_verify_cert_error_string(error);
    }
}

}  // namespace workbench
