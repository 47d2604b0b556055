#pragma once

#include <memory>
#include <string>

#include <openssl/ossl_typ.h>

namespace workbench {

// Paths of PEM files.
struct TlsFiles {
    std::string authorities;  // empty: those that the system trusts
    std::string certificate;  // of this client, with those between it and its authority; empty: none
    std::string key;
};

// How connections to one broker are secured: TLS 1.2 or newer, with a broker that has proved to be the host
// that was asked for. For one connection at a time.
class TlsContext {
public:
    // Reads the files. `host` is a name or an address. std::runtime_error with the file, the mistake and what
    // to do.
    TlsContext(TlsFiles const& tlsFiles, std::string const& tlsHost);
    TlsContext(TlsContext const&) = delete;
    TlsContext& operator=(TlsContext const&) = delete;

    SSL_CTX* Handle() const { return context.get(); }
    // To be called before each handshake.
    void Begin() { mistake.clear(); }
    // What is wrong with the broker's certificate, and what to do; empty if it was good, or did not come.
    std::string const& Mistake() const { return mistake; }

private:
    struct Freed {
        void operator()(SSL_CTX* used) const;
    };

    static int Verified(int isGood, X509_STORE_CTX* chain);
    static void Reached(SSL const* connection, int where, int result);
    void ReadFiles();
    void ExpectHost();
    std::string MistakeOf(X509_STORE_CTX* chain) const;

    TlsFiles files;
    std::string host;
    bool isAddress = false;  // host
    std::unique_ptr<SSL_CTX, Freed> context;
    std::string mistake;
};

}  // namespace workbench
