#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ConfirmedServiceChoiceEnum.h"
#include "ErrorBase.h"
#include "ErrorClassEnum.h"
#include "ErrorCodeEnum.h"
#include "IPduParser.h"
#include "SimpleError.h"

// BACnet-Error-PDU (ASHRAE 135 clause 20.1.7): 50, original invoke id, service choice, error. It owns its
// error.
class ErrorPdu : public PDU {
public:
    // All fields 0, no error.
    ErrorPdu() = default;
    // Both constructors take ownership of the error.
    ErrorPdu(char id, ConfirmedServiceChoiceEnum choice, ErrorBase* theError);
    ErrorPdu(char id, ConfirmedServiceChoiceEnum choice, std::unique_ptr<ErrorBase> theError);

    PduTypeEnum PduType() const override { return PduTypeEnum::Error; }
    // Without an error the service choice is the last octet.
    std::vector<char> GetBytes() const override;

    // Always 0, so operator== is true for any other PDU. Equals compares the contents.
    int Compare(PDU& other) const override;

    // True for the very same object; throws std::bad_cast for another class.
    bool Equals(PDU& other) const override;
    // Compares invoke id, service choice and error. A missing error equals only a missing error.
    bool Equals(ErrorPdu& other) const;

    char GetOriginalInvokeId() const { return originalInvokeId; }
    void SetOriginalInvokeId(char value) { originalInvokeId = value; }
    ConfirmedServiceChoiceEnum GetServiceChoice() const { return serviceChoice; }
    void SetServiceChoice(ConfirmedServiceChoiceEnum value) { serviceChoice = value; }
    // Null when there is none. This object keeps the ownership.
    ErrorBase* GetError() const { return error.get(); }

    // The texts for the log.
    static std::string Message(ErrorClassEnum group);
    static std::string Message(ErrorCodeEnum code);

private:
    char originalInvokeId = 0;
    ConfirmedServiceChoiceEnum serviceChoice{};
    std::unique_ptr<ErrorBase> error;
};

// Ignores the first octet.
class ErrorPduParser : public IPduParser {
public:
    std::unique_ptr<PDU> Parse(char firstOctet, IStreamBase& stream) const override;

    // Reads two tags. Class and code are the first data octet of each, which departs from ASHRAE 135 clause
    // 20.2.11: of an enumeration of two octets only the high octet is kept. Installed systems rely on this.
    // Throws FormatErrorException when a tag is missing, has no data or is constructed.
    static std::unique_ptr<SimpleError> GetErrorPack(IStreamBase& stream);
};
