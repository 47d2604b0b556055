#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "ConfirmedServiceAck.h"
#include "ConfirmedServiceRequest.h"
#include "Exceptions.h"
#include "FakeStream.h"
#include "Hex.h"
#include "PduParser.h"

namespace test {

inline std::unique_ptr<PDU> ParseApdu(Octets octets) {
    RecordSeed("apdus", octets);
    FakeStream stream(octets);
    return PduParser::Parse(stream);
}

inline std::unique_ptr<PDU> ParseApdu(std::string_view hex) {
    return ParseApdu(Hex(hex));
}

// The APDU as a PDU of class T; std::bad_cast if it is of another class.
template <class T>
std::unique_ptr<T> ParseAs(std::string_view hex) {
    std::unique_ptr<PDU> pdu = ParseApdu(hex);
    T* const typed = &dynamic_cast<T&>(*pdu);
    pdu.release();
    return std::unique_ptr<T>(typed);
}

// The text of the exception that the call throws, which must be an E.
template <class E, class Call>
std::string TextOf(Call call) {
    try {
        call();
    } catch (E const& e) {
        return e.what();
    }
    return "nothing was thrown";
}

// Expects that the parser refuses every truncation of this APDU.
inline void ExpectEachTruncationRefused(std::string_view hex) {
    Octets const whole = Hex(hex);
    EXPECT_NO_THROW(ParseApdu(whole));
    for (std::size_t length = 0; length < whole.size(); ++length) {
        SCOPED_TRACE(length);
        auto const end = whole.begin() + static_cast<std::ptrdiff_t>(length);
        EXPECT_THROW(ParseApdu(Octets(whole.begin(), end)), ParseException);
    }
}

// A request payload with given octets that counts its destructions.
class StubRequest : public ConfirmedServiceRequest {
public:
    explicit StubRequest(std::string_view hex, int* destroyed = nullptr)
        : octets(Hex(hex)), destructions(destroyed) {}
    ~StubRequest() override {
        if (destructions != nullptr) {
            ++*destructions;
        }
    }
    Octets GetBytes() const override { return octets; }

private:
    Octets octets;
    int* destructions;
};

// An ack payload with given octets that compares by one number and counts its destructions.
class StubAck : public ConfirmedServiceAck {
public:
    explicit StubAck(int orderNumber, std::string_view hex = "", int* destroyed = nullptr)
        : order(orderNumber), octets(Hex(hex)), destructions(destroyed) {}
    ~StubAck() override {
        if (destructions != nullptr) {
            ++*destructions;
        }
    }
    int Compare(ConfirmedServiceAck& other) const override {
        return order - dynamic_cast<StubAck&>(other).order;
    }
    Octets GetBytes() const override { return octets; }

private:
    int order;
    Octets octets;
    int* destructions;
};

// A PDU with any type number whose class is not one of the driver's.
class ForgedPdu : public PDU {
public:
    explicit ForgedPdu(PduTypeEnum typeNumber) : type(typeNumber) {}
    PduTypeEnum PduType() const override { return type; }
    Octets GetBytes() const override { return PDU::GetBytes(); }

private:
    PduTypeEnum type;
};

}  // namespace test
