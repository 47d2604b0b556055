#include "ErrorPdu.h"

#include <utility>

#include "Exceptions.h"
#include "Octets.h"
#include "TagKind.h"
#include "TagParser.h"

namespace {

int FirstDataOctet(TagBase* tag) {
    Tag const& primitive = RequirePrimitive(tag);
    if (primitive.data.empty()) {
        throw FormatErrorException();
    }
    return OctetValue(primitive.data.front());
}

}  // namespace

ErrorPdu::ErrorPdu(char id, ConfirmedServiceChoiceEnum choice, ErrorBase* theError)
    : ErrorPdu(id, choice, std::unique_ptr<ErrorBase>(theError)) {}

ErrorPdu::ErrorPdu(char id, ConfirmedServiceChoiceEnum choice, std::unique_ptr<ErrorBase> theError)
    : originalInvokeId(id), serviceChoice(choice), error(std::move(theError)) {}

std::vector<char> ErrorPdu::GetBytes() const {
    std::vector<char> octets{0x50, originalInvokeId, static_cast<char>(serviceChoice)};
    if (error) {
        AppendOctets(octets, error->GetBytes());
    }
    return octets;
}

int ErrorPdu::Compare(PDU&) const {
    return 0;
}

bool ErrorPdu::Equals(PDU& other) const {
    return this == &other || Equals(dynamic_cast<ErrorPdu&>(other));
}

bool ErrorPdu::Equals(ErrorPdu& other) const {
    if (originalInvokeId != other.originalInvokeId || serviceChoice != other.serviceChoice) {
        return false;
    }
    if (!error || !other.error) {
        return error == other.error;
    }
    return error->Equals(*other.error);
}

std::unique_ptr<PDU> ErrorPduParser::Parse(char, IStreamBase& stream) const {
    char const invokeId = stream.ReadByte();
    auto const choice = ReadEnum<ConfirmedServiceChoiceEnum>(stream);
    return std::make_unique<ErrorPdu>(invokeId, choice, GetErrorPack(stream));
}

std::unique_ptr<SimpleError> ErrorPduParser::GetErrorPack(IStreamBase& stream) {
    auto const tags = TagParser::ReadAppSequence(stream, 2);
    int const group = FirstDataOctet(tags[0].get());
    int const code = FirstDataOctet(tags[1].get());
    return std::make_unique<SimpleError>(static_cast<ErrorClassEnum>(group),
                                         static_cast<ErrorCodeEnum>(code));
}
