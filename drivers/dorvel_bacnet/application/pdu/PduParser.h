#pragma once

#include <memory>

#include "ConfirmedServiceChoiceEnum.h"
#include "IPduParser.h"
#include "IStreamBase.h"
#include "PDU.h"
#include "ParserRegistry.h"

// Parses one APDU: its type selects the parser.
class PduParser {
public:
    using Registry = ParserRegistry<PduTypeEnum, IPduParser>;

    // The stream is at the first octet of the APDU. Throws WrongLengthException for an APDU that ends too
    // early, FormatErrorException for a PDU type or a service without a parser, and what the parser of the
    // service throws. Any thread may call it. A static initialiser may call it too, unless the APDU has
    // property values: those need the support table, which is a static object itself.
    static std::unique_ptr<PDU> Parse(IStreamBase& stream);

    // A new registry with the six PDU types that have a class.
    static Registry GetDefaultPduParsers();

    // The registry of the process. It is built when the library is loaded and never changes, so any thread
    // may read it. A static initialiser of another file calls Parse instead, which does not depend on their
    // order.
    static Registry const& PduParsers;
};

// Programs that link the driver's objects may refer to it. Nothing here reads it.
extern ConfirmedServiceChoiceEnum _serviceChoice;
