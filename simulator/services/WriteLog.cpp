#include "WriteLog.h"

#include "TagText.h"

namespace simulator {

namespace {

struct Row {
    int code;
    char const* name;
};

constexpr Row ErrorNames[] = {
    {static_cast<int>(ErrorCode::InvalidDataType), "invalid-data-type"},
    {static_cast<int>(ErrorCode::UnknownObject), "unknown-object"},
    {static_cast<int>(ErrorCode::UnknownProperty), "unknown-property"},
    {static_cast<int>(ErrorCode::ValueOutOfRange), "value-out-of-range"},
    {static_cast<int>(ErrorCode::WriteAccessDenied), "write-access-denied"},
    {static_cast<int>(ErrorCode::CharacterSetNotSupported), "character-set-not-supported"},
    {static_cast<int>(ErrorCode::InvalidArrayIndex), "invalid-array-index"},
    {static_cast<int>(ErrorCode::PropertyIsNotAnArray), "property-is-not-an-array"},
};

constexpr Row RejectNames[] = {
    {static_cast<int>(RejectReason::InvalidParameterDataType), "invalid-parameter-data-type"},
    {static_cast<int>(RejectReason::InvalidTag), "invalid-tag"},
    {static_cast<int>(RejectReason::MissingRequiredParameter), "missing-required-parameter"},
    {static_cast<int>(RejectReason::ParameterOutOfRange), "parameter-out-of-range"},
    {static_cast<int>(RejectReason::TooManyArguments), "too-many-arguments"},
};

template <std::size_t count>
std::string NameOfCode(Row const (&rows)[count], int code) {
    for (Row const& row : rows) {
        if (row.code == code) {
            return row.name;
        }
    }
    return std::to_string(code);
}

}  // namespace

void WriteLog::Asked(WriteRequest const& request) {
    if (!observer) {
        return;
    }
    what += ' ' + TextOfObject(request.object) + ' ' + NameOf(request.property);
    if (request.index) {
        what += '[' + std::to_string(*request.index) + ']';
    }
    what += " = " + TextOfTags(request.value);
    if (request.priority) {
        what += ", priority " + std::to_string(*request.priority);
    }
}

void WriteLog::Refused(ErrorCode code) {
    Tell("refused, " + NameOfCode(ErrorNames, static_cast<int>(code)));
}

void WriteLog::Rejected(RejectReason reason) {
    Tell("rejected, " + NameOfCode(RejectNames, static_cast<int>(reason)));
}

void WriteLog::Tell(std::string const& outcome) {
    if (observer) {
        observer(what + ": " + outcome);
    }
}

}  // namespace simulator
