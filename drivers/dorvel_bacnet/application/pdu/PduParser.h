#pragma once

#include <memory>

#include "ConfirmedServiceChoiceEnum.h"
#include "IPduParser.h"
#include "IStreamBase.h"
#include "PDU.h"
#include "ParserRegistry.h"

// Turns one APDU into a PDU: its type picks the parser.
class PduParser {
public:
    using Registry = ParserRegistry<PduTypeEnum, IPduParser>;

    // The stream stands at the APDU's first octet. Throws WrongLengthException for an APDU that ends too
    // early, FormatErrorException for a PDU type or a service without a parser, and whatever the parser of
    // the service throws. May be called by several threads at once, and from a static initialiser unless the
    // APDU is an ack or a request with property values: those need the support table, itself a static object.
    static std::unique_ptr<PDU> Parse(IStreamBase& stream);

    // A new registry of the six PDU types that have a class.
    static Registry GetDefaultPduParsers();

    // The registry of the process, built at load and never changed, so any thread may read it: an unknown
    // type is only looked up. Static initialisers of other files go through Parse, which does not depend on
    // their order.
    static Registry const& PduParsers;
};

// Kept for those who link against it; nothing here reads it.
extern ConfirmedServiceChoiceEnum _serviceChoice;
